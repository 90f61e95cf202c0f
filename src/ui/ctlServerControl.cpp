#include "ui/ctlServerControl.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "core/frmGlobal.h"
#include "server/ctlGRServer.h"
#include "ui/CheckBoxSetting.h"
#include "ui/NumberSetting.h"
#include "ui_ctlServerControl.h"

namespace {

/// A setting of the options object that exists when it is asked, not of the one that exists now.
template <typename Binding, typename Type>
typename Binding::Value bound(Setting<Type> clsOptions::*setting)
{
    return {[setting] { return (gRoot->Options()->*setting)(); },
            [setting](Type value) { (gRoot->Options()->*setting).Let(value); }};
}

ctlGRServer &server()
{
    return *gRoot->GlobalForm()->uctlGRServer;
}

} // namespace

ctlServerControl::ctlServerControl() : m_ui(std::make_unique<Ui::ctlServerControl>())
{
    m_ui->setupUi(this);
    tieCheckBoxes();
    tieNumbers();
    connect(m_ui->txtServerCommandLineArgs, &QLineEdit::textChanged, this,
            [](const QString &text) { gRoot->Options()->ServerCommandLineArgs.Let(text); });
    connect(m_ui->cmdStartGRServer, &QPushButton::clicked, this,
            [] { server().StartGRServer(true); });
    connect(m_ui->cmdStopGRServer, &QPushButton::clicked, this, [] { server().StopGRServer(); });
}

ctlServerControl::~ctlServerControl() = default;

void ctlServerControl::tieCheckBoxes()
{
    const struct
    {
        QCheckBox *box;
        CheckBoxLabel *label;
        Setting<bool> clsOptions::*setting;
    } rows[] = {
        {m_ui->chkAutoStartGRServer, m_ui->lblAutoStartGRServer, &clsOptions::AutoStartGRServer},
        {m_ui->chkAutoRestartGRServer, m_ui->lblAutoRestartGRServer,
         &clsOptions::AutoRestartGRServer},
        {m_ui->chkAutoRestartOnProcessStop, m_ui->lblAutoRestartOnProcessStop,
         &clsOptions::AutoRestartOnProcessStop},
    };
    for (const auto &row : rows) {
        m_checkBoxes.push_back(
            new CheckBoxSetting(row.box, row.label, bound<CheckBoxSetting>(row.setting)));
    }
}

void ctlServerControl::tieNumbers()
{
    const QString milliseconds =
        QStringLiteral("Please enter a value between 0 and 32767)"); // without its opening twin
    const QString seconds = QStringLiteral("Please enter a value between 0 and 64)");
    const struct
    {
        QLineEdit *box;
        QScrollBar *scroll;
        QLabel *label;
        QString rangeMessage;
        Setting<std::int32_t> clsOptions::*setting;
    } rows[] = {
        {m_ui->txtPollingFreq, m_ui->vscrPollingFreq, m_ui->lblPollingFreq, milliseconds,
         &clsOptions::ServerPollingFrequency},
        {m_ui->txtServerStartupTimeout, m_ui->vscrServerStartupTimeout,
         m_ui->lblServerStartupTimeout, seconds, &clsOptions::ServerStartupTimeout},
        {m_ui->txtServerTimeout, m_ui->vscrServerTimeout, m_ui->lblServerTimeout, seconds,
         &clsOptions::ServerTimeout},
    };
    for (const auto &row : rows) {
        m_numbers.push_back(new NumberSetting(row.box, row.scroll, row.label, row.rangeMessage,
                                              bound<NumberSetting>(row.setting)));
    }
}

void ctlServerControl::FillFields()
{
    for (CheckBoxSetting *const checkBox : m_checkBoxes) {
        checkBox->fill();
    }
    for (NumberSetting *const number : m_numbers) {
        number->fill();
    }
    m_ui->txtServerCommandLineArgs->setText(gRoot->Options()->ServerCommandLineArgs());
}

void ctlServerControl::PushUpdate()
{
    m_ui->lblServerProcessStatus->setText(server().ProcessStatusText());
    m_ui->lblServerNetworkStatus->setText(server().NetworkStatusText());
}
