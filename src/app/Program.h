#pragma once

#include "app/frmGlobal.h"
#include "core/clsZebek.h"
#include "ui/frmMain.h"

#include <QString>

#include <memory>
#include <optional>

class clsTrackStats;

/// The program: makes the services and the windows in order, and ends the process.
class Program final : public clsZebek
{
public:
    /// `programDirectory`: the directory that the program was started from, without a separator
    /// at its end.
    Program(const platform::Machine &machine, QString programDirectory);
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;
    ~Program() override;

    /// Starts everything. A failing step is shown with Retry and Cancel; Cancel leaves the later
    /// steps undone. Without the game's program beside ours it says so and ends the process.
    void Start();
    void Quit() override;
    /// The same when nobody can be asked: a failing save is recorded, and the process ends.
    void quitUnattended();

    clsErrors *Errors() const override { return m_errors.get(); }
    clsOptions *Options() const override { return m_options.get(); }
    clsReplays *Replays() const override { return m_replays.get(); }
    const QString &RootDirectory() const override { return m_rootDirectory; }
    clsWebSite *WebSite() const override { return m_webSite.get(); }
    const platform::Machine &Machine() const override { return m_machine; }
    ctlGRServer &Server() const override { return m_globalForm->uctlGRServer; }
    frmGlobal *GlobalForm() const override { return m_globalForm.get(); }
    frmMain *MainWindow() const override { return m_mainWindow.get(); }
    void RefreshPages(std::optional<PageKey> key) const override;

private:
    bool locateRootDirectory();
    void createReplaysFolder() const;
    void loadGlobalForm();
    void createWebSite();
    void loadMainWindow();
    void startWebServer() const;
    void configureSupervisor() const;
    void watchStatistics() const;
    void autoStartServer() const;
    void end() const;

    const platform::Machine &m_machine;
    QString m_programDirectory;
    QString m_rootDirectory;
    std::unique_ptr<clsErrors> m_errors;
    std::unique_ptr<clsOptions> m_options;
    std::unique_ptr<frmGlobal> m_globalForm;
    std::unique_ptr<clsTrackStats> m_trackStats;
    std::unique_ptr<clsReplays> m_replays;
    std::unique_ptr<clsWebSite> m_webSite;
    std::unique_ptr<frmMain> m_mainWindow;
    bool m_quitting = false;
};
