#include "app/Program.h"

#include "core/basGamePath.h"
#include "core/basTraps.h"
#include "core/clsErrors.h"
#include "core/clsOptions.h"
#include "core/config.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Machine.h"
#include "records/clsReplays.h"
#include "records/clsTrackStats.h"
#include "ui/ctlReplayOptions.h"
#include "ui/ctlServerControl.h"
#include "ui/ctlServerOptions.h"
#include "ui/ctlStatusOptions.h"
#include "ui/ctlSystemOptions.h"
#include "web/clsWebSite.h"

#include <QDir>
#include <QFileInfo>

#include <array>
#include <filesystem>
#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int HeartbeatMilliseconds = 500;
constexpr int StatisticsMilliseconds = 45000;

QString gameProgram()
{
    return fnGamePath(u"GhostRecon.exe"_s);
}

/// The game's directory for a program that was started from `programDirectory`.
QString rootDirectoryOf(const QString &programDirectory)
{
    const QString sourceTree = QDir::toNativeSeparators(u"DevelopmentRoot/Development"_s);
    if (config::DevelopmentPath && programDirectory.contains(sourceTree)) {
        return uR"(C:\Program Files\_Games\Red Storm Entertainment\Ghost Recon\)"_s;
    }
    return programDirectory.endsWith(QDir::separator()) // a drive's root
               ? programDirectory
               : programDirectory + QDir::separator();
}

} // namespace

Program::Program(const platform::Machine &machine, QString programDirectory)
    : m_machine(machine), m_programDirectory(std::move(programDirectory))
{
}

Program::~Program() = default;

void Program::RefreshPages(std::optional<PageKey> key) const
{
    if (!m_webSite) {
        return;
    }
    if (key) {
        m_webSite->Page(*key).Refresh();
    } else {
        m_webSite->RefreshAllPages();
    }
}

void Program::Start()
{
    constexpr Routine Starting{"Zebek", "Start", "Root Object"};
    bool gameFound = false;
    if (!runWithRetry(Starting, [&] { gameFound = locateRootDirectory(); }) || !gameFound) {
        return;
    }
    const std::array<std::function<void()>, 13> steps{
        [this] { m_errors = std::make_unique<clsErrors>(); },
        [this] { loadGlobalForm(); },
        [this] { m_options = std::make_unique<clsOptions>(); },
        [this] { m_trackStats = std::make_unique<clsTrackStats>(); },
        [this] { m_replays = std::make_unique<clsReplays>(); },
        [this] { createWebSite(); },
        [this] { loadMainWindow(); },
        [this] { startWebServer(); },
        [this] { m_mainWindow->show(); },
        [this] { configureSupervisor(); },
        [this] { watchStatistics(); },
        [this] { autoStartServer(); },
        [this] { m_globalForm->tmrHeartbeat.setInterval(HeartbeatMilliseconds); },
    };
    for (const auto &step : steps) {
        if (!runWithRetry(Starting, step)) {
            return;
        }
    }
}

bool Program::locateRootDirectory()
{
    m_rootDirectory = rootDirectoryOf(m_programDirectory);
    if (!QFileInfo(gameProgram()).isFile()) {
        m_machine.messageBoxes.show(
            u"Please place the 'ZebekSuite.exe' in your Ghost Recon Directory and "
            "run it from there"_s,
            u"Ghost Recon Not Found"_s, platform::OkOnly + platform::StopIcon);
        m_machine.processEnd.end();
        return false;
    }
    createReplaysFolder();
    return true;
}

void Program::createReplaysFolder() const
{
    const QString folder = m_rootDirectory + u"Replays"_s;
    std::error_code failed;
    std::filesystem::create_directory(QFileInfo(folder).filesystemFilePath(), failed);
    if (failed) {
        throw platform::pathFailure(u"The folder \"%1\" cannot be created"_s.arg(folder), failed);
    }
}

void Program::loadGlobalForm()
{
    m_globalForm = std::make_unique<frmGlobal>();
    m_globalForm->Form_Load();
}

void Program::createWebSite()
{
    m_webSite = std::make_unique<clsWebSite>();
    m_webSite->RefreshAllPages();
}

void Program::loadMainWindow()
{
    m_mainWindow = std::make_unique<frmMain>();
    m_mainWindow->hostPanel(frmMain::System, std::make_unique<ctlSystemOptions>());
    m_mainWindow->hostPanel(frmMain::ServerControl, std::make_unique<ctlServerControl>());
    m_mainWindow->hostPanel(frmMain::ServerOptions, std::make_unique<ctlServerOptions>());
    m_mainWindow->hostPanel(frmMain::ReplayOptions, std::make_unique<ctlReplayOptions>());
    m_mainWindow->hostPanel(frmMain::StatusReporting, std::make_unique<ctlStatusOptions>());
    m_mainWindow->Form_Load();
    m_mainWindow->FillFields();
}

void Program::startWebServer() const
{
    if (m_options->AllowRemoteAccess()) {
        m_globalForm->StartWebServer();
    }
}

void Program::configureSupervisor() const
{
    ctlGRServer &server = m_globalForm->uctlGRServer;
    server.setEXEPath(gameProgram());
    server.setCMDLineArgs(m_options->ServerCommandLineArgs());
}

void Program::watchStatistics() const
{
    m_globalForm->tmrReplays.setInterval(StatisticsMilliseconds);
    m_trackStats->setTimerControl(&m_globalForm->tmrReplays);
}

void Program::autoStartServer() const
{
    if (m_options->AutoStartGRServer()) {
        m_globalForm->uctlGRServer.StartGRServer(m_options->FindGRServer());
    }
}

void Program::Quit()
{
    if (std::exchange(m_quitting, true)) {
        return;
    }
    // Not destroyed: this may be called from within it, while it lists its folder.
    if (m_replays) {
        m_replays->Release();
    }
    if (m_options) {
        m_options->Save();
        m_options.reset();
    }
    end();
}

void Program::quitUnattended()
{
    if (m_options) {
        m_options->saveUnattended();
    }
    end();
}

void Program::end() const
{
    if (m_mainWindow) {
        m_mainWindow->keepPlace();
        m_mainWindow->leaveTray();
    }
    m_machine.processEnd.end();
}
