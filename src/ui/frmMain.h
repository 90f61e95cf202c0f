#pragma once

#include "core/iMainWindow.h"
#include "ui/ServerState.h"
#include "ui/TrayIcon.h"
#include "ui/ctlPanel.h"

#include <QIcon>
#include <QPointer>
#include <QWidget>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>

class StatusFooter;
class frmPicture;

namespace Ui {
class frmMain;
}

/// The main window: tabs with a panel each, the game server's state, the version and thanks lines
/// and the Quit button. It holds no settings; it passes two calls on to the panel of the selected
/// tab, and spares a panel with unsaved edits the filling, whoever asks for it. Closing it ends the
/// program. The state is on its icon and in the desktop's tray, too.
class frmMain : public QWidget, public iMainWindow
{
    Q_DISABLE_COPY_MOVE(frmMain)

public:
    /// The tabs, in order.
    enum Tab { Main, System, ServerControl, ServerOptions, ReplayOptions, StatusReporting, Stats };
    static constexpr std::size_t TabCount = Stats + 1;

    frmMain();
    ~frmMain() override;

    /// Puts a panel on its tab.
    void hostPanel(Tab tab, std::unique_ptr<ctlPanel> panel);
    /// Fills the panels that others may ask for before their tab is first selected.
    void Form_Load();

    void FillFields() override;
    void PushUpdate() override;
    void loadMods() override;
    const clsMods *ModsList() const override;
    void setBusy(bool busy) override;
    void notifyRestart(RestartReason reason) override;

    /// Brings the window to the front, where there is one, and a message box that is open.
    static void bringToFront(QWidget *window);
    /// Takes the icon from the tray, where the end of the process may leave it.
    void leaveTray() { m_tray.remove(); }

    void Label2_Click();
    /// Notes size and place of the window for the next start.
    void keepPlace() const;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void onKey(const QKeySequence &key, const std::function<void()> &action);
    void addShortcuts();
    void takePlace();
    void keepFooterLastInTabOrder();
    /// The selected tab's panel; null where the tab has none.
    ctlPanel *selectedPanel() const;
    void showState();
    void showNewState(const ServerState &state);

    std::unique_ptr<Ui::frmMain> m_ui;
    std::array<ctlPanel *, TabCount> m_panels{};
    QPointer<frmPicture> m_picture;
    StatusFooter *m_status;
    TrayIcon m_tray;
    std::optional<ServerState> m_shown;
    /// Each made once: Qt keeps copies, some MiB in all, of whatever icons there were before.
    std::map<ServerHealth, QIcon> m_stateIcons;
    QString m_lastRestart;
};
