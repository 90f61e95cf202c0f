#pragma once

#include "core/iMainWindow.h"
#include "ui/ctlPanel.h"

#include <QPointer>
#include <QWidget>

#include <array>
#include <memory>

class frmPicture;

namespace Ui {
class frmMain;
}

/// The main window: tabs with a panel each, the version and thanks lines and the Quit button. It
/// holds no settings; it passes two calls on to the panel of the selected tab, and spares a panel
/// with unsaved edits the filling, whoever asks for it. Closing it ends the program.
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

    void Label2_Click();
    /// Notes size and place of the window for the next start.
    void keepPlace() const;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void addTabShortcuts();
    void takePlace();
    void quit() const;
    void keepFooterLastInTabOrder();
    /// The selected tab's panel; null where the tab has none.
    ctlPanel *selectedPanel() const;

    std::unique_ptr<Ui::frmMain> m_ui;
    std::array<ctlPanel *, TabCount> m_panels{};
    QPointer<frmPicture> m_picture;
};
