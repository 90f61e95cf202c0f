#include "web/pages/clsWebPage_PublicStatus.h"

#include "core/basMain.h"
#include "core/clsZebek.h"
#include "core/iMainWindow.h"
#include "platform/CodePage.h"
#include "server/clsMods.h"
#include "server/ctlGRServer.h"
#include "web/pages/PageText.h"

namespace {

QString cell(const char *style, const QString &content)
{
    return QStringLiteral("<td class=\"%1\">").arg(QLatin1String(style)) + content +
           QStringLiteral("</td>");
}

QString row(const QString &cells)
{
    return QStringLiteral("<tr>") + cells + QStringLiteral("</tr>\n");
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
    window->LoadMods();
    QString names;
    if (const clsMods *const mods = window->ModsList()) {
        for (const auto &mod : mods->Mods()) {
            names += mod->Active ? mod->Name() + QStringLiteral(" - ") : QString();
        }
    }
    return names;
}

/// "mm:ss", with more minutes where it takes them.
QString matchLength(const QString &seconds)
{
    constexpr int SecondsPerMinute = 60;
    const int length = seconds.toInt();
    return QStringLiteral("%1:%2")
        .arg(length / SecondsPerMinute, 2, 10, QLatin1Char('0'))
        .arg(length % SecondsPerMinute, 2, 10, QLatin1Char('0'));
}

QString gameNotes(const ctlServerStatus &status)
{
    return QStringLiteral("<td class=\"GameNotes\"><table cellspacing=\"10px\">\n") +
           labelled("Map:", status.Map()) + labelled("Mission:", status.Mission()) +
           labelled("Game Type:", status.GameType()) +
           labelled("Game Length:", matchLength(status.Length())) +
           labelled("Remaining:", status.TimeRemaining()) + QStringLiteral("</table></td>\n");
}

QString players(const ctlServerStatus &status)
{
    QString rows = row(cell("Playerslabel", QStringLiteral("Players (") +
                                                status.PlayerCountString() + QStringLiteral(")")));
    for (const auto &player : status.Players()) {
        rows += row(QStringLiteral("<td>") + player.name + QStringLiteral("</td>"));
    }
    return QStringLiteral("<td><table class=\"Players\">\n") + rows +
           QStringLiteral("</table></td>\n");
}

QString runningServer(const ctlServerStatus &status)
{
    const auto bold = [](const char *label) {
        return QStringLiteral("<b>%1</b>").arg(QLatin1String(label));
    };
    // The tables and the row that are open at the beginning and the end are those of the head.
    return cell("title", status.Name()) + QStringLiteral("</tr>\n") +
           row(cell("MOTD", status.MOTD())) + QStringLiteral("<tr><td><hr></td></tr>\n") +
           row(cell("version", bold("Version:  ") + status.Version())) +
           row(cell("mods", bold("Active Mods:  ") + activeMods())) +
           QStringLiteral("</table></td></tr>\n<tr><td><table class=\"game\"><tr>\n") +
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
            : QStringLiteral("<td align=\"center\">This Ghost Recon server is not running</td>\n");
    m_text = platform::toCodePage(page::text(10000) + part + page::text(10001));
    m_stale = false;
}
