#include "ui/frmMain.h"

#include "core/basMain.h"
#include "core/clsZebek.h"
#include "core/config.h"
#include "ui/ScrolledPage.h"
#include "ui/WheelNeedsFocus.h"
#include "ui/frmPicture.h"
#include "ui/pictures.h"
#include "ui_frmMain.h"

#include <QCloseEvent>
#include <QScreen>
#include <QSettings>
#include <QShortcut>
#include <QTabBar>

using namespace Qt::StringLiterals;

namespace {

/// What the desktop keeps for this program; the settings file is the game's and its operator's.
QSettings desktopStore()
{
    return QSettings(u"Zebek Suite"_s, u"Zebek Suite"_s);
}

const QString Place = u"MainWindow"_s; ///< in the desktop's store

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
    m_ui->PicHeader->setPicture(pictures::header());
    m_ui->lblWelcome->setText(welcomeLine());
    m_ui->pageMainLayout->addWidget(new ScrolledPage(m_ui->introduction));
    new WheelNeedsFocus(m_ui->tabMain->tabBar());
    addTabShortcuts();
    connect(m_ui->tabMain, &QTabWidget::currentChanged, this, [this] { FillFields(); });
    connect(m_ui->Label2, &Link::clicked, this, [this] { Label2_Click(); });
    connect(m_ui->cmdQuit, &QPushButton::clicked, this, [this] { quit(); });
}

frmMain::~frmMain() = default;

/// Those of a browser; the tab control itself has Ctrl+Tab only.
void frmMain::addTabShortcuts()
{
    const std::pair<Qt::Key, int> keys[] = {{Qt::Key_PageDown, 1}, {Qt::Key_PageUp, -1}};
    for (const auto &[key, step] : keys) {
        connect(new QShortcut(Qt::CTRL | key, this), &QShortcut::activated, this, [this, step] {
            const int count = m_ui->tabMain->count();
            m_ui->tabMain->setCurrentIndex((m_ui->tabMain->currentIndex() + step + count) % count);
        });
    }
}

void frmMain::hostPanel(Tab tab, std::unique_ptr<ctlPanel> panel)
{
    m_panels.at(tab) = panel.get();
    panel->fitFont();
    m_ui->tabMain->widget(tab)->layout()->addWidget(new ScrolledPage(panel.release()));
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
    takePlace();
}

/// Where the window was last, as far as that is on a screen; else as large as what is in it.
void frmMain::takePlace()
{
    if (!restoreGeometry(desktopStore().value(Place).toByteArray())) {
        const QTabBar &tabs = *m_ui->tabMain->tabBar();
        const QMargins margins = layout()->contentsMargins();
        const int allTabs = tabs.sizeHint().width() + margins.left() + margins.right();
        resize(sizeHint().expandedTo({allTabs, 0}).boundedTo(screen()->availableSize()));
    }
}

void frmMain::keepPlace() const
{
    if (isVisible()) {
        desktopStore().setValue(Place, saveGeometry());
    }
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

void frmMain::quit() const
{
    keepPlace();
    gRoot->Quit();
}

void frmMain::closeEvent(QCloseEvent *event)
{
    event->accept();
    quit();
}
