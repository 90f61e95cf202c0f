#include "web/pages/clsWebPage_AdminServerControl.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/CodePage.h"
#include "server/ctlGRServer.h"
#include "web/pages/PageText.h"

QByteArray clsWebPage_AdminServerControl::HTML(const QString & /*message*/)
{
    const ctlGRServer &server = gRoot->Server();
    return platform::toCodePage(page::adminFrame() + page::text(3200) + page::credentialFields() +
                                page::text(3201) + page::row(server.ProcessStatusText()) +
                                page::row(server.NetworkStatusText()) + page::text(3202)) +
           m_body;
}

void clsWebPage_AdminServerControl::Refresh()
{
    const clsOptions &options = *gRoot->Options();
    constexpr page::FieldWidth Milliseconds{6, 5};
    constexpr page::FieldWidth Seconds{3, 2};
    m_body = platform::toCodePage(
        page::row(page::checkBox("AutoStartGRServer", options.AutoStartGRServer(),
                                 QStringLiteral("   Start GR server on startup."))) +
        page::row(page::textArea("UserCMDLINE", "CMDLine", QStringLiteral("Startup Arguments"),
                                 options.ServerCommandLineArgs())) +
        page::text(3203) +
        page::row(page::checkBox("AutoRestartGRServer", options.AutoRestartGRServer(),
                                 QStringLiteral("   Restart GR server on crash.")) +
                  QStringLiteral("\n") +
                  page::checkBox("AutoRestartOnProcessStop", options.AutoRestartOnProcessStop(),
                                 QStringLiteral("   Restart GR server if process is stopped."))) +
        page::row(page::textField("Pollingfreq", QStringLiteral("Polling Frequency (ms)"),
                                  QString::number(options.ServerPollingFrequency()), Milliseconds) +
                  QStringLiteral("\n") +
                  page::textField("Timeout", QStringLiteral("Restart Timeout (s)"),
                                  QString::number(options.ServerTimeout()), Seconds) +
                  QStringLiteral("\n") +
                  page::textField("StartupTimeout", QStringLiteral("Startup Timeout (s)"),
                                  QString::number(options.ServerStartupTimeout()), Seconds)) +
        page::text(3204));
}
