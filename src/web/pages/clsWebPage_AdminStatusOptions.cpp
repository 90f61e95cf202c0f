#include "web/pages/clsWebPage_AdminStatusOptions.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "web/pages/PageText.h"

using namespace Qt::StringLiterals;

QString clsWebPage_AdminStatusOptions::build() const
{
    const clsOptions &options = *gRoot->Options();
    constexpr page::FieldWidth Url{120};
    return page::adminFrame() + page::text(3500) + page::credentialFields() + page::text(3501) +
           page::row(page::textField("ServerGo", u"Server Running Image URL:"_s,
                                     options.ServerRunningGif(), Url)) +
           page::row(page::textField("ServerCrash", u"Server Crashed Image URL:"_s,
                                     options.ServerCrashGif(), Url)) +
           page::text(u"settings-closing.html"_s);
}
