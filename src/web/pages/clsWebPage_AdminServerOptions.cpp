#include "web/pages/clsWebPage_AdminServerOptions.h"

#include "core/basMain.h"
#include "core/basNumbers.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/CodePage.h"
#include "server/clsMods.h"
#include "server/clsOptionsXML.h"
#include "server/ctlGRServer.h"
#include "web/pages/PageText.h"

namespace {

/// Empty, or false, for a setting that the file does not have.
template <typename Value>
Value shown(const GameSetting<Value> &setting)
{
    Value value{};
    SkipFailure([&] { value = setting(); });
    return value;
}

QString shownNumber(const GameSetting<std::int32_t> &setting)
{
    QString text;
    SkipFailure([&] { text = fnToText(setting()); });
    return text;
}

QString heading(const char *text)
{
    return QStringLiteral("<tr><td class=\"heading\">%1</td></tr>\n").arg(QLatin1String(text));
}

QString general(const clsOptionsXML &options)
{
    return heading("General") +
           page::row(page::textField("ServerName", QStringLiteral("Server Name"),
                                     shown(options.MPGameName), {21, 20})) +
           page::row(page::textArea("UserMOTD", "MOTD", QStringLiteral("Message of the day"),
                                    shown(options.MOTD),
                                    QStringLiteral(" maxlength=\"100\" size=\"100\""))) +
           page::row(page::checkBox("AllowRemoteAccess", shown(options.RemoteServerAccess),
                                    QStringLiteral("   Allow Remote Access")) +
                     QStringLiteral("\n") +
                     page::textField("RAPassword", QStringLiteral("Password"),
                                     shown(options.RemoteServerPasswd), {13, 12})) +
           page::row(
               page::checkBox("RecordGame", shown(options.RecordGame),
                              QStringLiteral("   Record Game (Necessary if archiving replays)")));
}

QString network(const clsOptionsXML &options)
{
    constexpr page::FieldWidth Number{9, 8};
    return heading("Network Options") +
           page::row(page::checkBox("BehindFireWall", shown(options.BehindFirewall),
                                    QStringLiteral("   Behind Firewall"))) +
           page::row(page::textField("Synch", QStringLiteral("Synch. Timeout"),
                                     shownNumber(options.GameSynchTimeout), Number)) +
           page::row(page::textField("JoinPort", QStringLiteral("Join Port"),
                                     shownNumber(options.JoinPort), Number)) +
           page::row(page::textField("AnnouncePort", QStringLiteral("Announce Port"),
                                     shownNumber(options.AnnouncePort), Number)) +
           page::row(QStringLiteral(
               "<small>Only experienced users should modify these settings</small>"));
}

QString modRows()
{
    clsMods mods;
    mods.Load();
    QString rows = page::row(QStringLiteral("<span class=\"ModsTitle\">Active Mods</span>"));
    for (const clsModInfo *const mod : mods.ActiveMods()) {
        rows += page::row(page::disabledCheckBox(true, mod->Name()));
    }
    rows += page::row(QStringLiteral("<hr>Available Mods"));
    for (const auto &mod : mods.Mods()) {
        if (!mod->Active) {
            rows += page::row(page::disabledCheckBox(false, mod->Name()));
        }
    }
    return rows;
}

/// What follows the mods; it ends the tables and the form.
QString endOfForm()
{
    const QString tablesEnd = QStringLiteral("</table></td></tr></table>\n<p class=\"submit\">");
    const QString formEnd = QStringLiteral("</p>\n</form>\n");
    if (!gRoot->Server().Connected()) {
        return page::row(page::text(QStringLiteral("mods-button.html"))) + tablesEnd +
               QStringLiteral("<input type=\"submit\" name=\"SubmitType\" value=\"Update\">") +
               formEnd;
    }
    return page::row(QStringLiteral(
               "<small>(You cannot edit mods while the server is running.)</small>")) +
           tablesEnd +
           QStringLiteral("You cannot update server options while the game server is running. "
                          "Please stop the server first.") +
           formEnd;
}

} // namespace

QByteArray clsWebPage_AdminServerOptions::HTML(const QString & /*message*/)
{
    return m_page + platform::toCodePage(
                        endOfForm() +
                        QStringLiteral("<form name=\"OpenMods\" method=\"POST\" target=\"mods\" "
                                       "action=\"OpenMods\">") +
                        page::credentialFields() + QStringLiteral("</form>\n") +
                        page::text(QStringLiteral("content-closing.html")));
}

void clsWebPage_AdminServerOptions::Refresh()
{
    clsOptionsXML options;
    SkipFailure([&] { options.Load(); });
    m_page = platform::toCodePage(
        page::adminFrame() + page::text(3300) + page::credentialFields() + page::text(3301) +
        general(options) + network(options) +
        QStringLiteral("</table></td>\n<td class=\"mods\"><table class=\"panel\">\n") + modRows());
}
