#include "web/pages/clsWebPage_AdminReplays.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "web/ReplayFiles.h"
#include "web/pages/PageText.h"

using namespace Qt::StringLiterals;

namespace {

QString entries()
{
    QString result;
    for (const QString &name : fnReplayFiles()) {
        result += u"<tr><td><input type=\"checkbox\" name=\"DELFILE"_s + name +
                  u"\" aria-label=\"Delete "_s + name +
                  u"\"></td><td class=\"replay\"><a href=\""_s + fnDownloadLink(name) +
                  u"\" target=\"_blank\">"_s + name + u"</a></td></tr>\n"_s;
    }
    return result;
}

} // namespace

QString clsWebPage_AdminReplays::build() const
{
    const clsOptions &options = *gRoot->Options();
    constexpr page::FieldWidth Count{6, 5};
    return page::adminFrame() + page::text(3100) + page::credentialFields() + page::text(3101) +
           page::row(
               page::checkBox("archiveReplays", options.RecordReplays(), u"   Archive Replays"_s)) +
           page::row(page::checkBox("SkipBlankReplays", options.SkipBlankReplays(),
                                    u"   Skip Blank Replays"_s)) +
           page::row(page::textField("ReplayCount", u"Replays to store"_s,
                                     QString::number(options.ReplayCount()), Count)) +
           page::text(3102) + u"<td class=\"path\">"_s + options.ReplayFolder() +
           u"</td></tr>\n"_s + page::text(3103) + page::credentialFields() + page::text(3104) +
           entries() + page::text(3105);
}
