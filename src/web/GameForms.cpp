// The forms of the game's settings and mods.
#include "core/basMain.h"
#include "core/clsZebek.h"
#include "core/iMainWindow.h"
#include "server/clsMods.h"
#include "server/clsOptionsXML.h"
#include "server/ctlGRServer.h"
#include "web/FormFields.h"
#include "web/UpdateForms.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *NumberMessage =
    "Please enter a valid number for the game synch. time out (0-65535)<br>";
constexpr std::int32_t LargestNumber = 65535;

constexpr FormField<clsOptionsXML, GameSetting> GameFields[] = {
    {"ServerName", &clsOptionsXML::MPGameName, "Server name truncated to max 20 characters (", 20},
    {"MOTD", &clsOptionsXML::MOTD, "M.O.T.D. name truncated to max 100 characters (", 100},
    {"AllowRemoteAccess", &clsOptionsXML::RemoteServerAccess},
    {"RAPassword", &clsOptionsXML::RemoteServerPasswd,
     "Admin password name truncated to max 12 characters (", 12},
    {"RecordGame", &clsOptionsXML::RecordGame},
    {"BehindFireWall", &clsOptionsXML::BehindFirewall},
    {"Synch", &clsOptionsXML::GameSynchTimeout, NumberMessage, LargestNumber},
    {"JoinPort", &clsOptionsXML::JoinPort, NumberMessage, LargestNumber},
    {"AnnouncePort", &clsOptionsXML::AnnouncePort, NumberMessage, LargestNumber},
};

constexpr std::pair<const char *, void (clsMods::*)(const QString &)> ModActions[] = {
    {"Deactivate", &clsMods::DeactivateMod},
    {"  Activate  ", &clsMods::ActivateMod},
    {"^", &clsMods::DecreaseModPosition},
    {"v", &clsMods::IncreaseModPosition},
};

bool serverIsHeld()
{
    return gRoot->Server().Connected();
}

} // namespace

QString Update_ServerOptionsConfig(const clsWebServerRequest &request)
{
    return trapUpdate("Update_ServerOptionsConfig", [&] {
        if (serverIsHeld()) {
            return u"You cannot update the server options while the server is "
                   "running. Please shutdown the game server first<br>"_s;
        }
        clsOptionsXML options;
        options.loadOrFail();
        QString message = storeForm(request, options, GameFields,
                                    [](auto &setting, const auto &value) { setting.Let(value); });
        options.Save();
        return message;
    });
}

QString Update_ModList(const clsWebServerRequest &request)
{
    return trapUpdate("Update_ModList", [&] {
        if (serverIsHeld()) {
            return u"Please stop the GR server when attempting to edit the mods list. Changes will "
                   "not be saved.<br><center><input type=\"button\" value=\"Close\" "
                   "onclick=\"javascript:window.close();\"></center>"_s;
        }
        clsMods mods;
        mods.Load();
        const QString action = request.FormField(u"ActionButton"_s);
        for (const auto &[button, change] : ModActions) {
            if (action == QLatin1String(button)) {
                (mods.*change)(request.FormField(u"modname"_s));
            }
        }
        if (!mods.Save()) {
            return UpdateFailed;
        }
        gRoot->MainWindow()->loadMods();
        return QString();
    });
}
