#include "web/pages/clsWebPage_AdminSystemOptions.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "core/iGlobalForm.h"
#include "web/pages/PageText.h"

QString clsWebPage_AdminSystemOptions::build() const
{
    const clsOptions &options = *gRoot->Options();
    constexpr page::FieldWidth LogIn{16};
    constexpr int AddressWidth = 15;
    constexpr int PortWidth = 7;
    return page::adminFrame() + page::text(3400) + page::credentialFields() + page::text(3401) +
           page::row(
               page::checkBox("StartOnStartup", options.AutoRunOnStartup(),
                              QStringLiteral("   Start Zebek Suite when this computer starts."),
                              QStringLiteral(" disabled"))) +
           page::row(
               page::checkBox("ScanForProcesses", options.FindGRServer(),
                              QStringLiteral("   Automatically scan for GR Server Processes."))) +
           page::text(3402) +
           page::row(page::checkBox("StartWebServer", options.AllowRemoteAccess(),
                                    QStringLiteral("   Start Web server on startup"))) +
           page::row(page::disabledTextField(QStringLiteral("I.P."),
                                             gRoot->GlobalForm()->DefaultLocalIP(), AddressWidth) +
                     QStringLiteral("\n") +
                     page::disabledTextField(QStringLiteral("Port"),
                                             QString::number(options.RemoteAccessPort()),
                                             PortWidth)) +
           page::row(page::textField("AdminUN", QStringLiteral("Admin Username"),
                                     options.AdminUserName(), LogIn)) +
           page::row(page::textField("AdminPW", QStringLiteral("Admin Password"),
                                     options.AdminPassword(), LogIn)) +
           page::text(QStringLiteral("settings-closing.html"));
}
