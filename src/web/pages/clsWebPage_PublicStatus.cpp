#include "web/pages/clsWebPage_PublicStatus.h"

#include "core/basMain.h"
#include "core/clsZebek.h"
#include "core/iMainWindow.h"
#include "platform/CodePage.h"
#include "server/clsMods.h"
#include "server/ctlGRServer.h"
#include "web/pages/PageText.h"

using namespace Qt::StringLiterals;

namespace {

QString cell(const char *style, const QString &content)
{
    return u"<td class=\"%1\">"_s.arg(QLatin1String(style)) + content + u"</td>"_s;
}

QString row(const QString &cells)
{
    return u"<tr>"_s + cells + u"</tr>\n"_s;
}

QString labelled(const char *label, const QString &value)
{
    return row(cell("label", QLatin1String(label)) + cell("data", value));
}

/// In the order in which they were found.
QString activeMods()
{
    iMainWindow *const window = gRoot->MainWindow();
    if (window == nullptr) {
        return {};
    }
    window->loadMods();
    QString names;
    if (const clsMods *const mods = window->ModsList()) {
        for (const auto &mod : mods->Mods()) {
            names += mod->Active ? mod->Name() + u" - "_s : QString();
        }
    }
    return names;
}

/// "mm:ss", with more minutes where it takes them.
QString matchLength(const QString &seconds)
{
    constexpr int SecondsPerMinute = 60;
    const int length = seconds.toInt();
    return u"%1:%2"_s.arg(length / SecondsPerMinute, 2, 10, QChar(u'0'))
        .arg(length % SecondsPerMinute, 2, 10, QChar(u'0'));
}

QString gameNotes(const ctlServerStatus &status)
{
    return u"<td class=\"GameNotes\"><table cellspacing=\"10px\">\n"_s +
           labelled("Map:", status.Map()) + labelled("Mission:", status.Mission()) +
           labelled("Game Type:", status.GameType()) +
           labelled("Game Length:", matchLength(status.Length())) +
           labelled("Remaining:", status.TimeRemaining()) + u"</table></td>\n"_s;
}

QString players(const ctlServerStatus &status)
{
    QString rows = row(cell("Playerslabel", u"Players ("_s + status.PlayerCountString() + u")"_s));
    for (const auto &player : status.Players()) {
        rows += row(u"<td>"_s + player.name + u"</td>"_s);
    }
    return u"<td><table class=\"Players\">\n"_s + rows + u"</table></td>\n"_s;
}

QString runningServer(const ctlServerStatus &status)
{
    const auto bold = [](const char *label) { return u"<b>%1</b>"_s.arg(QLatin1String(label)); };
    // The tables and the row that are open at the beginning and the end are those of the head.
    return cell("title", status.Name()) + u"</tr>\n"_s + row(cell("MOTD", status.MOTD())) +
           u"<tr><td><hr></td></tr>\n"_s +
           row(cell("version", bold("Version:  ") + status.Version())) +
           row(cell("mods", bold("Active Mods:  ") + activeMods())) +
           u"</table></td></tr>\n<tr><td><table class=\"game\" role=\"presentation\"><tr>\n"_s +
           gameNotes(status) + players(status);
}

} // namespace

QByteArray clsWebPage_PublicStatus::HTML(const QString & /*message*/)
{
    if (m_stale) {
        Refresh();
    }
    return m_text;
}

void clsWebPage_PublicStatus::Refresh()
{
    const ctlGRServer &server = gRoot->Server();
    const QString part =
        server.Connected() && server.Status() != ServerQueryStatus::Dead
            ? runningServer(server.StatusObject())
            : u"<td align=\"center\">This Ghost Recon server is not running</td>\n"_s;
    m_text = platform::toCodePage(page::text(10000) + part + page::text(10001));
    m_stale = false;
}
