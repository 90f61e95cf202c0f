#include "ui/frmMain.h"

#include "core/basMain.h"
#include "core/clsZebek.h"
#include "core/config.h"
#include "ui/frmPicture.h"
#include "ui/pictures.h"
#include "ui_frmMain.h"

#include <QCloseEvent>

using namespace Qt::StringLiterals;

namespace {

QString versionLine()
{
    return u"Zebek Suite v%1.%2.%3"_s.arg(config::VersionMajor)
        .arg(config::VersionMinor, 2, 10, QChar(u'0'))
        .arg(config::VersionRevision, 3, 10, QChar(u'0'));
}

QString welcomeLine()
{
    return u"Welcome to Zebek Suite %1.%2"_s.arg(config::VersionMajor)
        .arg(config::VersionMinor, 2, 10, QChar(u'0'));
}

} // namespace

frmMain::frmMain() : m_ui(std::make_unique<Ui::frmMain>())
{
    m_ui->setupUi(this);
    setWindowIcon(pictures::applicationIcon());
    m_ui->PicHeader->setPixmap(pictures::header(devicePixelRatioF()));
    m_ui->lblWelcome->setText(welcomeLine());
    connect(m_ui->tabMain, &QTabWidget::currentChanged, this, [this] { FillFields(); });
    connect(m_ui->Label2, &QLabel::linkActivated, this, [this] { Label2_Click(); });
    connect(m_ui->cmdQuit, &QPushButton::clicked, this, [] { gRoot->Quit(); });
}

frmMain::~frmMain() = default;

void frmMain::hostPanel(Tab tab, std::unique_ptr<ctlPanel> panel)
{
    m_panels.at(tab) = panel.get();
    m_ui->tabMain->widget(tab)->layout()->addWidget(panel.release());
    keepFooterLastInTabOrder();
}

/// New controls come last of all, behind the ones below the tabs.
void frmMain::keepFooterLastInTabOrder()
{
    QWidget *last = previousInFocusChain();
    while (last != this && last->focusPolicy() == Qt::NoFocus) {
        last = last->previousInFocusChain();
    }
    setTabOrder(last, m_ui->Label2);
    setTabOrder(m_ui->Label2, m_ui->cmdQuit);
}

void frmMain::Form_Load()
{
    for (const Tab tab : {System, ServerOptions}) {
        if (ctlPanel *const panel = m_panels.at(tab)) {
            panel->FillFields();
        }
    }
    m_ui->lblVersion->setText(versionLine());
}

ctlPanel *frmMain::selectedPanel() const
{
    return m_panels.at(static_cast<std::size_t>(m_ui->tabMain->currentIndex()));
}

void frmMain::FillFields()
{
    ctlPanel *const panel = selectedPanel();
    if (panel != nullptr && !panel->Dirty()) {
        panel->FillFields();
    }
}

void frmMain::loadMods()
{
    if (ctlPanel *const panel = m_panels.at(ServerOptions)) {
        panel->loadMods();
    }
}

const clsMods *frmMain::ModsList() const
{
    const ctlPanel *const panel = m_panels.at(ServerOptions);
    return panel != nullptr ? panel->ModsList() : nullptr;
}

void frmMain::PushUpdate()
{
    if (ctlPanel *const panel = selectedPanel()) {
        panel->PushUpdate();
    }
}

void frmMain::Label2_Click()
{
    if (m_picture.isNull()) {
        m_picture = new frmPicture(this);
    }
    m_picture->show();
    m_picture->raise();
    m_picture->activateWindow();
}

void frmMain::closeEvent(QCloseEvent *event)
{
    event->accept();
    gRoot->Quit();
}
