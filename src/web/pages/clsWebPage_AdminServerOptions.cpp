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

using namespace Qt::StringLiterals;

namespace {

/// Empty, or false, for a setting that the file does not have.
template <typename Value>
Value shown(const GameSetting<Value> &setting)
{
    Value value{};
    skipFailure([&] { value = setting(); });
    return value;
}

QString shownNumber(const GameSetting<std::int32_t> &setting)
{
    QString text;
    skipFailure([&] { text = fnToText(setting()); });
    return text;
}

QString heading(const char *text)
{
    return u"<tr><td class=\"heading\" role=\"heading\" aria-level=\"2\">%1</td></tr>\n"_s.arg(
        QLatin1String(text));
}

QString general(const clsOptionsXML &options)
{
    return heading("General") +
           page::row(page::textField("ServerName", u"Server Name"_s, shown(options.MPGameName),
                                     {21, 20})) +
           page::row(page::textArea("UserMOTD", "MOTD", u"Message of the day"_s,
                                    shown(options.MOTD), u" maxlength=\"100\" size=\"100\""_s)) +
           page::row(page::checkBox("AllowRemoteAccess", shown(options.RemoteServerAccess),
                                    u"   Allow Remote Access"_s) +
                     u"\n"_s +
                     page::textField("RAPassword", u"Password"_s, shown(options.RemoteServerPasswd),
                                     {13, 12})) +
           page::row(page::checkBox("RecordGame", shown(options.RecordGame),
                                    u"   Record Game (Necessary if archiving replays)"_s));
}

QString network(const clsOptionsXML &options)
{
    constexpr page::FieldWidth Number{9, 8};
    return heading("Network Options") +
           page::row(page::checkBox("BehindFireWall", shown(options.BehindFirewall),
                                    u"   Behind Firewall"_s)) +
           page::row(page::textField("Synch", u"Synch. Timeout"_s,
                                     shownNumber(options.GameSynchTimeout), Number)) +
           page::row(
               page::textField("JoinPort", u"Join Port"_s, shownNumber(options.JoinPort), Number)) +
           page::row(page::textField("AnnouncePort", u"Announce Port"_s,
                                     shownNumber(options.AnnouncePort), Number)) +
           page::row(u"<small>Only experienced users should modify these settings</small>"_s);
}

QString modRows()
{
    clsMods mods;
    mods.Load();
    QString rows = page::row(
        u"<span class=\"ModsTitle\" role=\"heading\" aria-level=\"2\">Active Mods</span>"_s);
    for (const clsModInfo *const mod : mods.activeMods()) {
        rows += page::row(page::disabledCheckBox(true, mod->shownName()));
    }
    rows += page::row(u"<hr>Available Mods"_s);
    for (const auto &mod : mods.Mods()) {
        if (!mod->Active) {
            rows += page::row(page::disabledCheckBox(false, mod->shownName()));
        }
    }
    return rows;
}

/// What follows the mods; it ends the tables and the form.
QString endOfForm()
{
    const QString tablesEnd = u"</table></td></tr></table>\n<p class=\"submit\">"_s;
    const QString formEnd = u"</p>\n</form>\n"_s;
    if (!gRoot->Server().Connected()) {
        return page::row(page::text(u"mods-button.html"_s)) + tablesEnd +
               u"<input type=\"submit\" name=\"SubmitType\" value=\"Update\">"_s + formEnd;
    }
    return page::row(u"<small>(You cannot edit mods while the server is running.)</small>"_s) +
           tablesEnd +
           u"You cannot update server options while the game server is running. "
           "Please stop the server first."_s +
           formEnd;
}

} // namespace

QByteArray clsWebPage_AdminServerOptions::HTML(const QString & /*message*/)
{
    if (m_stamp != clsOptionsXML::stampOfFile()) {
        Refresh();
    }
    return m_page + platform::toCodePage(endOfForm() +
                                         u"<form name=\"OpenMods\" method=\"POST\" target=\"mods\" "
                                         "action=\"OpenMods\">"_s +
                                         page::credentialFields() + u"</form>\n"_s +
                                         page::text(u"content-closing.html"_s));
}

void clsWebPage_AdminServerOptions::Refresh()
{
    m_stamp = clsOptionsXML::stampOfFile(); // before it is read: it may change meanwhile
    clsOptionsXML options;
    skipFailure([&] { options.Load(); });
    m_page = platform::toCodePage(
        page::adminFrame() + page::text(3300) + page::credentialFields() + page::text(3301) +
        general(options) + network(options) +
        u"</table></td>\n<td class=\"mods\"><table class=\"panel\" role=\"presentation\">\n"_s +
        modRows());
}
