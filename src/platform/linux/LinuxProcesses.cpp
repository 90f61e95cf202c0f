#include "platform/linux/LinuxProcesses.h"

#include "platform/CommandLine.h"
#include "platform/linux/SystemFailure.h"
#include "platform/linux/Wine.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// How long a process that was ended by force may take to be gone, in milliseconds. A search for
/// running servers right afterwards must not find the dying one.
constexpr int ForcedEndMilliseconds = 1000;

int descriptorOf(ProcessHandle process)
{
    return static_cast<int>(process);
}

void check(int error, const QString &what)
{
    if (error != 0) {
        throw systemFailure(error, what);
    }
}

/// What a started program is given: nothing of ours but the environment, its own directory, no
/// terminal and the default treatment of signals.
class SpawnSettings
{
public:
    explicit SpawnSettings(const QByteArray &directory)
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawnattr_init(&m_attributes);

        posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&m_actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&m_actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1);
        posix_spawn_file_actions_addchdir_np(&m_actions, directory.constData());

        sigset_t signals;
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF |
                                                    POSIX_SPAWN_SETSIGMASK);
    }

    SpawnSettings(const SpawnSettings &) = delete;
    SpawnSettings &operator=(const SpawnSettings &) = delete;

    ~SpawnSettings()
    {
        posix_spawn_file_actions_destroy(&m_actions);
        posix_spawnattr_destroy(&m_attributes);
    }

    const posix_spawn_file_actions_t *actions() const { return &m_actions; }
    const posix_spawnattr_t *attributes() const { return &m_attributes; }

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

std::vector<QByteArray> encoded(const QStringList &texts)
{
    std::vector<QByteArray> result;
    result.reserve(static_cast<std::size_t>(texts.size()));
    for (const QString &text : texts) {
        result.push_back(QFile::encodeName(text));
    }
    return result;
}

std::vector<char *> pointersTo(std::vector<QByteArray> &texts)
{
    std::vector<char *> result;
    result.reserve(texts.size() + 1);
    for (QByteArray &text : texts) {
        result.push_back(text.data());
    }
    result.push_back(nullptr);
    return result;
}

/// The id of the process behind a descriptor; nothing once it has been reaped.
std::optional<pid_t> idOf(ProcessHandle process)
{
    QFile info(u"/proc/self/fdinfo/%1"_s.arg(process));
    if (!info.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray key = "Pid:"_ba;
    const QList<QByteArray> lines = info.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(key)) {
            const int id = line.mid(key.size()).trimmed().toInt();
            return id > 0 ? std::optional<pid_t>(id) : std::nullopt;
        }
    }
    return std::nullopt;
}

bool isWineLoader(const QString &path)
{
    return QFileInfo(path).fileName().startsWith(u"wine"_s);
}

/// A program whose file was replaced by an update still is that program.
QString withoutDeletionMark(const QString &path)
{
    const QString deleted = u" (deleted)"_s;
    return path.endsWith(deleted) && !QFile::exists(path) ? path.chopped(deleted.size()) : path;
}

/// The program that a process runs, that of Wine's loader being the Windows program; empty where
/// the process has ended or the system does not tell.
QString executableOf(pid_t id)
{
    const QString path = QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(id));
    return withoutDeletionMark(isWineLoader(path) ? programMappedBy(id).value_or(path) : path);
}

/// A process that is started and then cannot be opened would run beside the next one.
void requireDescriptors()
{
    constexpr int Needed = 2; // by open()
    std::array<int, Needed> descriptors{};
    std::generate(descriptors.begin(), descriptors.end(), [] { return ::eventfd(0, EFD_CLOEXEC); });
    const int error = descriptors.back() < 0 ? errno : 0;
    std::for_each(descriptors.begin(), descriptors.end(), ::close);
    check(error, u"A process cannot be started"_s);
}

/// Of an ended child that is not reaped yet.
std::uint32_t exitCodeOf(int descriptor)
{
    constexpr std::uint32_t EndedBySignal = 128;
    siginfo_t info{};
    if (::waitid(P_PIDFD, static_cast<id_t>(descriptor), &info, WEXITED | WNOHANG | WNOWAIT) != 0) {
        return 0;
    }
    const auto status = static_cast<std::uint32_t>(info.si_status);
    return info.si_code == CLD_EXITED ? status : EndedBySignal + status;
}

/// The program by the command line, which the system shows of another user's process, too.
QString programByCommandLine(ProcessId id)
{
    QFile file(u"/proc/%1/cmdline"_s.arg(id));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QList<QByteArray> arguments = file.readAll().split('\0');
    const bool wine = isWineLoader(QFile::decodeName(arguments.value(0)));
    return QFile::decodeName(arguments.value(wine ? 1 : 0));
}

} // namespace

ProcessId LinuxProcesses::start(const QString &commandLine)
{
    reapEndedChildren();
    requireDescriptors();
    QStringList arguments = splitCommandLine(commandLine);
    const QString program = arguments.first();
    const SpawnSettings settings(QFile::encodeName(QFileInfo(program).absolutePath()));
    if (isWindowsProgram(program)) {
        arguments.prepend(u"wine"_s);
    }
    std::vector<QByteArray> texts = encoded(arguments);
    const std::vector<char *> pointers = pointersTo(texts);

    pid_t id = 0;
    check(posix_spawnp(&id, texts.front().constData(), settings.actions(), settings.attributes(),
                       pointers.data(), environ),
          arguments.first());
    m_children.push_back(id);
    return id;
}

ProcessHandle LinuxProcesses::open(ProcessId id)
{
    const auto descriptor = static_cast<int>(::syscall(SYS_pidfd_open, id, 0));
    if (descriptor < 0) {
        return NoProcess;
    }
    // Descriptor 0 would read as "no process", should standard input be closed.
    const int handle = ::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    ::close(descriptor);
    return handle < 0 ? NoProcess : handle;
}

void LinuxProcesses::close(ProcessHandle process)
{
    ::close(descriptorOf(process));
    reapEndedChildren();
}

std::optional<std::uint32_t> LinuxProcesses::exitCode(ProcessHandle process)
{
    if (process == NoProcess) {
        return std::nullopt;
    }
    return wait(process, 0) ? exitCodeOf(descriptorOf(process)) : StillActiveCode;
}

bool LinuxProcesses::wait(ProcessHandle process, int milliseconds)
{
    if (process == NoProcess) {
        return false;
    }
    // The descriptor becomes readable when the process has ended, before its parent reaps it.
    pollfd event{descriptorOf(process), POLLIN, 0};
    const QDeadlineTimer deadline(milliseconds);
    int ready = 0;
    do {
        ready = ::poll(&event, 1, static_cast<int>(deadline.remainingTime()));
    } while (ready < 0 && errno == EINTR);
    return ready > 0 && (event.revents & POLLIN) != 0;
}

bool LinuxProcesses::terminate(ProcessHandle process)
{
    if (process == NoProcess) {
        return false;
    }
    if (::syscall(SYS_pidfd_send_signal, descriptorOf(process), SIGKILL, nullptr, 0) != 0) {
        return wait(process, 0); // one that has ended by itself cannot be ended
    }
    wait(process, ForcedEndMilliseconds);
    return true;
}

std::optional<QString> LinuxProcesses::executablePath(ProcessHandle process)
{
    const std::optional<pid_t> id = idOf(process);
    const QString path = id ? executableOf(*id) : QString();
    // The id could have gone to another process before it was used; not if ours still runs now.
    return path.isEmpty() || wait(process, 0) ? std::nullopt : std::optional(path);
}

std::vector<ProcessId> LinuxProcesses::running()
{
    std::vector<ProcessId> result;
    const QStringList entries = QDir(u"/proc"_s).entryList(QDir::Dirs);
    if (entries.isEmpty()) { // where at least this process is
        throw systemFailure(EMFILE, u"/proc"_s);
    }
    for (const QString &entry : entries) {
        if (const ProcessId id = entry.toInt(); id > 0) {
            result.push_back(id);
        }
    }
    return result;
}

std::optional<QString> LinuxProcesses::program(ProcessId id)
{
    QString path = executableOf(id);
    if (path.isEmpty() || isWineLoader(path)) { // which has not mapped its program yet
        path = programByCommandLine(id);
    }
    return path.isEmpty() ? std::nullopt : std::optional(path);
}

void LinuxProcesses::reapEndedChildren()
{
    std::erase_if(m_children, [](pid_t child) { return ::waitpid(child, nullptr, WNOHANG) != 0; });
}

} // namespace platform
