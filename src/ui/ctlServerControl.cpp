#include "ui/ctlServerControl.h"

#include "server/ctlGRServer.h"
#include "ui/CheckBoxSetting.h"
#include "ui/ScrolledNumberSetting.h"
#include "ui/TextSetting.h"
#include "ui/bound.h"
#include "ui_ctlServerControl.h"

#include <QTimer>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

ctlGRServer &server()
{
    return gRoot->Server();
}

} // namespace

ctlServerControl::ctlServerControl() : m_ui(std::make_unique<Ui::ctlServerControl>())
{
    m_ui->setupUi(this);
    addCheckBoxes();
    addNumbers();
    add(new TextSetting(m_ui->txtServerCommandLineArgs, m_ui->lblServerCommandLineArgs,
                        bound(&clsOptions::ServerCommandLineArgs)));
    connect(m_ui->cmdStartGRServer, &QPushButton::clicked, this,
            [this] { obey([] { server().StartGRServer(true); }); });
    connect(m_ui->cmdStopGRServer, &QPushButton::clicked, this,
            [this] { obey([] { server().StopGRServer(); }); });
}

ctlServerControl::~ctlServerControl() = default;

void ctlServerControl::addCheckBoxes()
{
    add(new CheckBoxSetting(m_ui->chkAutoStartGRServer, m_ui->lblAutoStartGRServer,
                            bound(&clsOptions::AutoStartGRServer)));
    add(new CheckBoxSetting(m_ui->chkAutoRestartGRServer, m_ui->lblAutoRestartGRServer,
                            bound(&clsOptions::AutoRestartGRServer)));
    add(new CheckBoxSetting(m_ui->chkAutoRestartOnProcessStop, m_ui->lblAutoRestartOnProcessStop,
                            bound(&clsOptions::AutoRestartOnProcessStop)));
}

void ctlServerControl::addNumbers()
{
    const QString milliseconds =
        u"Please enter a value between 0 and 32767)"_s; // without its opening twin
    const QString seconds = u"Please enter a value between 0 and 64)"_s;
    add(new ScrolledNumberSetting(m_ui->txtPollingFreq, m_ui->vscrPollingFreq, m_ui->lblPollingFreq,
                                  milliseconds, bound(&clsOptions::ServerPollingFrequency)));
    add(new ScrolledNumberSetting(m_ui->txtServerStartupTimeout, m_ui->vscrServerStartupTimeout,
                                  m_ui->lblServerStartupTimeout, seconds,
                                  bound(&clsOptions::ServerStartupTimeout)));
    add(new ScrolledNumberSetting(m_ui->txtServerTimeout, m_ui->vscrServerTimeout,
                                  m_ui->lblServerTimeout, seconds,
                                  bound(&clsOptions::ServerTimeout)));
}

/// A stop may take seconds. What is clicked meanwhile is delivered after it, and nobody wants it
/// any more: each would take as long again.
void ctlServerControl::obey(const std::function<void()> &order)
{
    if (!std::exchange(m_isObeying, true)) {
        order();
        QTimer::singleShot(0, this, [this] { m_isObeying = false; });
    }
}

void ctlServerControl::PushUpdate()
{
    m_ui->lblServerProcessStatus->setText(server().ProcessStatusText());
    m_ui->lblServerNetworkStatus->setText(server().NetworkStatusText());
    m_ui->lblProblem->tell(server().problem());
}
