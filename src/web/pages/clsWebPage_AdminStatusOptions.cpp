#include "web/pages/clsWebPage_AdminStatusOptions.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "web/pages/PageText.h"

QString clsWebPage_AdminStatusOptions::build() const
{
    const clsOptions &options = *gRoot->Options();
    constexpr page::FieldWidth Url{120};
    return page::adminFrame() + page::text(3500) + page::credentialFields() + page::text(3501) +
           page::row(page::textField("ServerGo", QStringLiteral("Server Running Image URL:"),
                                     options.ServerRunningGif(), Url)) +
           page::row(page::textField("ServerCrash", QStringLiteral("Server Crashed Image URL:"),
                                     options.ServerCrashGif(), Url)) +
           page::text(QStringLiteral("settings-closing.html"));
}
