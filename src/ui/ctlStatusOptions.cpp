#include "ui/ctlStatusOptions.h"

#include "ui/TextSetting.h"
#include "ui/bound.h"
#include "ui_ctlStatusOptions.h"

ctlStatusOptions::ctlStatusOptions() : m_ui(std::make_unique<Ui::ctlStatusOptions>())
{
    m_ui->setupUi(this);
    add(new TextSetting(m_ui->txtServerRunningGif, m_ui->lblServerRunningGif,
                        bound(&clsOptions::ServerRunningGif)));
    add(new TextSetting(m_ui->txtServerCrashGif, m_ui->lblServerCrashGif,
                        bound(&clsOptions::ServerCrashGif)));
}

ctlStatusOptions::~ctlStatusOptions() = default;
