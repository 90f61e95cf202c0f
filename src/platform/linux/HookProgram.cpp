#include "platform/HookProgram.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <csignal>
#include <linux/close_range.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform {

std::optional<QString> hookProgram(const QString &directory)
{
    const QFileInfo hook(QDir(directory), u"ZebekHook"_s);
    return hook.isFile() ? std::optional(hook.filePath()) : std::nullopt;
}

void prepareHook(QProcess &process, const QString &program, const QStringList &arguments)
{
    // By way of another, which can always be run: each program that QProcess fails to run costs a
    // descriptor for good, and without any left no hook runs and no page is served. This one also
    // makes a group, which can be ended as a whole.
    process.setProgram(u"setsid"_s);
    process.setArguments(QStringList{program} + arguments);
    process.setChildProcessModifier([] {
        static_cast<void>(::signal(SIGXFSZ, SIG_DFL));
        ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC); // whatever others left open
    });
}

QString whyNotRun(int exitCode)
{
    constexpr int NotExecutable = 126;
    constexpr int NotFound = 127;
    if (exitCode == NotExecutable) {
        return u"Permission denied, or not a program. Make it executable"_s;
    }
    return exitCode == NotFound ? u"Its interpreter, or a program that it calls, was not found"_s
                                : QString();
}

void endHook(QProcess &process)
{
    ::kill(-static_cast<pid_t>(process.processId()), SIGKILL);
}

} // namespace platform
