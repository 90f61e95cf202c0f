#include "web/pages/clsWebPage_AdminReplays.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "web/ReplayFiles.h"
#include "web/pages/PageText.h"

namespace {

QString entries()
{
    QString result;
    for (const QString &name : fnReplayFiles()) {
        result += QStringLiteral("<tr><td><input type=\"checkbox\" name=\"DELFILE") + name +
                  QStringLiteral("\" aria-label=\"Delete ") + name +
                  QStringLiteral("\"></td><td class=\"replay\"><a href=\"") + fnDownloadLink(name) +
                  QStringLiteral("\" target=\"_blank\">") + name +
                  QStringLiteral("</a></td></tr>\n");
    }
    return result;
}

} // namespace

QString clsWebPage_AdminReplays::build() const
{
    const clsOptions &options = *gRoot->Options();
    constexpr page::FieldWidth Count{6, 5};
    return page::adminFrame() + page::text(3100) + page::credentialFields() + page::text(3101) +
           page::row(page::checkBox("archiveReplays", options.RecordReplays(),
                                    QStringLiteral("   Archive Replays"))) +
           page::row(page::checkBox("SkipBlankReplays", options.SkipBlankReplays(),
                                    QStringLiteral("   Skip Blank Replays"))) +
           page::row(page::textField("ReplayCount", QStringLiteral("Replays to store"),
                                     QString::number(options.ReplayCount()), Count)) +
           page::text(3102) + QStringLiteral("<td class=\"path\">") + options.ReplayFolder() +
           QStringLiteral("</td></tr>\n") + page::text(3103) + page::credentialFields() +
           page::text(3104) + entries() + page::text(3105);
}
