#include "web/pages/clsWebPage_AdminSystemOptions.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "core/iGlobalForm.h"
#include "web/pages/PageText.h"

using namespace Qt::StringLiterals;

QString clsWebPage_AdminSystemOptions::build() const
{
    const clsOptions &options = *gRoot->Options();
    constexpr page::FieldWidth LogIn{16};
    constexpr int AddressWidth = 15;
    constexpr int PortWidth = 7;
    return page::adminFrame() + page::text(3400) + page::credentialFields() + page::text(3401) +
           page::row(page::checkBox("StartOnStartup", options.AutoRunOnStartup(),
                                    u"   Start Zebek Suite when this computer starts."_s,
                                    u" disabled"_s)) +
           page::row(page::checkBox("ScanForProcesses", options.FindGRServer(),
                                    u"   Automatically scan for GR Server Processes."_s)) +
           page::text(3402) +
           page::row(page::checkBox("StartWebServer", options.AllowRemoteAccess(),
                                    u"   Start Web server on startup"_s)) +
           page::row(page::disabledTextField(u"I.P."_s, gRoot->GlobalForm()->DefaultLocalIP(),
                                             AddressWidth) +
                     u"\n"_s +
                     page::disabledTextField(u"Port"_s, QString::number(options.RemoteAccessPort()),
                                             PortWidth)) +
           page::row(
               page::textField("AdminUN", u"Admin Username"_s, options.AdminUserName(), LogIn)) +
           page::row(
               page::textField("AdminPW", u"Admin Password"_s, options.AdminPassword(), LogIn)) +
           page::text(u"settings-closing.html"_s);
}
