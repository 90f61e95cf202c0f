#include "ui/frmMain.h"

#include "core/basMain.h"
#include "core/basVersion.h"
#include "core/clsErrors.h"
#include "core/clsZebek.h"
#include "core/config.h"
#include "platform/Machine.h"
#include "ui/ScrolledPage.h"
#include "ui/StateIcon.h"
#include "ui/StatusFooter.h"
#include "ui/WheelNeedsFocus.h"
#include "ui/frmPicture.h"
#include "ui/manual.h"
#include "ui/pictures.h"
#include "ui_frmMain.h"

#include <QApplication>
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

/// The name of the window's place in the desktop's store. Each game directory has its own tool.
QString placeKey()
{
    return u"MainWindow/"_s +
           QString::fromLatin1(gRoot->RootDirectory().toUtf8().toPercentEncoding());
}

QString welcomeLine()
{
    return u"Welcome to Zebek Suite %1.%2"_s.arg(config::VersionMajor)
        .arg(config::VersionMinor, 2, 10, QChar(u'0'));
}

QString toolTipFor(const ServerState &state)
{
    QStringList lines{wordsOf(state.health), state.problem, state.lastRestart, state.process,
                      state.network};
    lines.removeAll(QString());
    return lines.join(u'\n');
}

} // namespace

frmMain::frmMain()
    : m_ui(std::make_unique<Ui::frmMain>()), m_status(new StatusFooter),
      m_tray([this] { bringToFront(this); })
{
    m_ui->setupUi(this);
    m_ui->verticalLayout->insertWidget(m_ui->verticalLayout->indexOf(m_ui->tabMain) + 1, m_status);
    setWindowIcon(pictures::applicationIcon());
    m_ui->PicHeader->setPicture(pictures::header());
    m_ui->lblWelcome->setText(welcomeLine());
    m_ui->pageMainLayout->addWidget(new ScrolledPage(m_ui->introduction));
    new WheelNeedsFocus(m_ui->tabMain->tabBar());
    addShortcuts();
    connect(m_ui->tabMain, &QTabWidget::currentChanged, this, [this] {
        FillFields();
        showState();
    });
    connect(m_ui->Label2, &Link::clicked, this, [this] { Label2_Click(); });
    connect(m_ui->cmdQuit, &QPushButton::clicked, this, [] { gRoot->Quit(); });
}

frmMain::~frmMain() = default;

/// One that is held does it once.
void frmMain::onKey(const QKeySequence &key, const std::function<void()> &action)
{
    auto *const shortcut = new QShortcut(key, this);
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, this, action);
}

void frmMain::addShortcuts()
{
    const auto turnPages = [this](int step) {
        const int count = m_ui->tabMain->count();
        m_ui->tabMain->setCurrentIndex((m_ui->tabMain->currentIndex() + step + count) % count);
    };
    // Those of a browser; the tab control itself has Ctrl+Tab only.
    onKey(Qt::CTRL | Qt::Key_PageDown, [=] { turnPages(1); });
    onKey(Qt::CTRL | Qt::Key_PageUp, [=] { turnPages(-1); });
    onKey(QKeySequence::HelpContents, openManual);
}

void frmMain::hostPanel(Tab tab, std::unique_ptr<ctlPanel> panel)
{
    m_panels.at(tab) = panel.get();
    panel->fitFont();
    QLayout &page = *m_ui->tabMain->widget(tab)->layout();
    QWidget *const footer = panel->footer();
    page.addWidget(new ScrolledPage(panel.release()));
    if (footer != nullptr) {
        page.addWidget(footer);
    }
    keepFooterLastInTabOrder();
}

/// New controls come last of all, behind the ones below the tabs.
void frmMain::keepFooterLastInTabOrder()
{
    QWidget *last = previousInFocusChain();
    while (last != this && last->focusPolicy() == Qt::NoFocus) {
        last = last->previousInFocusChain();
    }
    setTabOrder(last, m_status->link());
    setTabOrder(m_status->link(), m_ui->Label2);
    setTabOrder(m_ui->Label2, m_ui->cmdQuit);
}

void frmMain::Form_Load()
{
    for (const Tab tab : {System, ServerOptions}) {
        if (ctlPanel *const panel = m_panels.at(tab)) {
            panel->FillFields();
        }
    }
    m_ui->lblVersion->setText(fnVersionLine());
    showState();
    takePlace();
}

/// Where the window was last, as far as that is on a screen; else as large as what is in it.
void frmMain::takePlace()
{
    if (!restoreGeometry(desktopStore().value(placeKey()).toByteArray())) {
        const QTabBar &tabs = *m_ui->tabMain->tabBar();
        const QMargins margins = layout()->contentsMargins();
        const int allTabs = tabs.sizeHint().width() + margins.left() + margins.right();
        resize(sizeHint().expandedTo({allTabs, 0}).boundedTo(screen()->availableSize()));
    }
}

void frmMain::keepPlace() const
{
    if (isVisible()) {
        desktopStore().setValue(placeKey(), saveGeometry());
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
    showState();
    if (ctlPanel *const panel = selectedPanel()) {
        panel->PushUpdate();
    }
}

void frmMain::showState()
{
    m_status->showErrors(gRoot->Errors()->count());
    ServerState state = serverState();
    state.lastRestart = m_lastRestart;
    // The panel of that tab tells the problem itself.
    m_status->showProblem(m_ui->tabMain->currentIndex() != ServerControl ? state.problem
                                                                         : QString());
    if (m_shown != state) {
        showNewState(state);
    }
    m_tray.lookForTray();
}

void frmMain::showNewState(const ServerState &state)
{
    QIcon &icon = m_stateIcons[state.health];
    if (icon.isNull()) {
        icon = stateIcon::onApplication(state.health);
    }
    if (!m_shown || m_shown->health != state.health) {
        setWindowIcon(icon);
    }
    m_shown = state;
    m_status->showState(state, toolTipFor(state));
    m_tray.showState(icon, toolTipFor(state));
}

void frmMain::setBusy(bool busy)
{
    if (busy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

void frmMain::notifyRestart(RestartReason reason)
{
    const QDateTime now = gRoot->Machine().clock.now();
    m_tray.notify(wordsOf(reason) + now.toString(u" HH:mm"_s));
    m_lastRestart = wordsOf(reason) + now.toString(u" yyyy-MM-dd HH:mm"_s);
}

void frmMain::bringToFront(QWidget *window)
{
    for (QWidget *const each : {window, QApplication::activeModalWidget()}) {
        if (each != nullptr && each->isVisible()) {
            each->setWindowState(each->windowState() & ~Qt::WindowMinimized);
            each->raise();
            each->activateWindow();
        }
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
