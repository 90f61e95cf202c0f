#include "web/pages/clsWebPage_AdminServerControl.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/CodePage.h"
#include "server/ctlGRServer.h"
#include "web/pages/PageText.h"

using namespace Qt::StringLiterals;

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
                                 u"   Start GR server on startup."_s)) +
        page::row(page::textArea("UserCMDLINE", "CMDLine", u"Startup Arguments"_s,
                                 options.ServerCommandLineArgs())) +
        page::text(3203) +
        page::row(page::checkBox("AutoRestartGRServer", options.AutoRestartGRServer(),
                                 u"   Restart GR server on crash."_s) +
                  u"\n"_s +
                  page::checkBox("AutoRestartOnProcessStop", options.AutoRestartOnProcessStop(),
                                 u"   Restart GR server if process is stopped."_s)) +
        page::row(page::textField("Pollingfreq", u"Polling Frequency (ms)"_s,
                                  QString::number(options.ServerPollingFrequency()), Milliseconds) +
                  u"\n"_s +
                  page::textField("Timeout", u"Restart Timeout (s)"_s,
                                  QString::number(options.ServerTimeout()), Seconds) +
                  u"\n"_s +
                  page::textField("StartupTimeout", u"Startup Timeout (s)"_s,
                                  QString::number(options.ServerStartupTimeout()), Seconds)) +
        page::text(3204));
}
