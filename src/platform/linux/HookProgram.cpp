#include "platform/HookProgram.h"

#include <QFileInfo>
#include <QProcess>

#include <csignal>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform {

std::optional<QString> hookProgram(const QString &directory)
{
    const QFileInfo hook(directory + u"/ZebekHook"_s);
    return hook.isFile() ? std::optional(hook.filePath()) : std::nullopt;
}

void prepareHook(QProcess &process, const QString &program, const QStringList &arguments)
{
    process.setProgram(program);
    process.setArguments(arguments);
    // A group of its own, which can be ended as a whole.
    process.setChildProcessModifier([] { ::setsid(); });
}

void endHook(QProcess &process)
{
    ::kill(-static_cast<pid_t>(process.processId()), SIGKILL);
}

} // namespace platform
