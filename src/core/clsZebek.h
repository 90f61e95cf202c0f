#pragma once

#include <QString>

#include <memory>

class clsErrors;
class clsOptions;
class clsReplays;
class clsTrackStats;
class clsWebSite;
class frmGlobal;
class frmMain;
class iMainWindow;

namespace platform {
struct Machine;
}

/// The root object: makes the services and the windows in order, and ends the program.
class clsZebek
{
public:
    /// `programDirectory`: the directory that the program was started from, without a separator
    /// at its end.
    clsZebek(const platform::Machine &machine, QString programDirectory);
    clsZebek(const clsZebek &) = delete;
    clsZebek &operator=(const clsZebek &) = delete;
    ~clsZebek();

    /// The error log; null before Start made it.
    clsErrors *Errors() const { return m_errors.get(); }
    /// The tool's settings; null before Start made them and after Quit.
    clsOptions *Options() const { return m_options.get(); }
    /// The replay archive; null before Start made it.
    clsReplays *Replays() const { return m_replays.get(); }
    /// The web site; null before Start made it.
    clsWebSite *WebSite() const { return m_webSite.get(); }
    /// The game's installation directory; ends in the platform's separator.
    const QString &RootDirectory() const { return m_rootDirectory; }
    /// The statistics tracker's copy of the game's statistics page.
    QString StatsCacheFileName() const;

    /// Starts everything. A failing step is shown with Retry and Cancel; Cancel leaves the later
    /// steps undone. Without the game's program beside ours it says so and ends the process.
    void Start();
    /// Saves the options and ends the process at once. The game server keeps running.
    void Quit();
    /// The same when nobody can be asked, and in any case: a failing save is recorded.
    void QuitUnattended();

    /// The hidden form with the timers and the supervisor; null before Start loaded it.
    frmGlobal *GlobalForm() const { return m_globalForm.get(); }
    /// The main window; null before Start loaded it.
    frmMain *MainWindow() const { return m_mainWindow.get(); }
    /// The main window as the web site knows it.
    iMainWindow *Desktop() const;
    const platform::Machine &Machine() const { return m_machine; }

    /// Renders a page of the web site again, or every page where the key is empty. Nothing while
    /// there is no web site, or no such page.
    void RefreshPages(const QString &key) const;

private:
    bool LocateRootDirectory();
    void CreateReplaysFolder() const;
    void LoadGlobalForm();
    void CreateWebSite();
    void LoadMainWindow();
    void StartWebServer() const;
    void ConfigureSupervisor() const;
    void WatchStatistics() const;
    void AutoStartServer() const;

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
