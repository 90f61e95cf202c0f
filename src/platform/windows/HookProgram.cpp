#include "platform/HookProgram.h"

#include "platform/windows/ProcessList.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

#include <windows.h>

#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// By its full path, since a name alone would be looked for beside this program first.
QString commandInterpreter()
{
    std::array<wchar_t, MAX_PATH> folder{};
    const UINT length = GetSystemDirectoryW(folder.data(), MAX_PATH);
    return QString::fromWCharArray(folder.data(), static_cast<qsizetype>(length)) + u"\\cmd.exe"_s;
}

/// cmd puts the text of an argument into the lines of the script and only then looks for quotes,
/// operators and blocks. So what it would take for one becomes an underscore: no text can become a
/// command, not even where the script forgets the quotes, as ") else ..." would in a block.
QString harmlessToCmd(QString argument)
{
    static const QRegularExpression special(uR"(["%&|<>^!()])"_s);
    return u'"' + argument.replace(special, u"_"_s) + u'"';
}

ULONGLONG startOf(HANDLE process)
{
    FILETIME start{};
    FILETIME unused{};
    GetProcessTimes(process, &start, &unused, &unused, &unused);
    return ULARGE_INTEGER{{start.dwLowDateTime, start.dwHighDateTime}}.QuadPart;
}

/// The parent first, which then starts no more. What is older is no child of it, but of another one
/// that had its number before.
void endTree(DWORD id, ULONGLONG notBefore = 0)
{
    auto *const process =
        OpenProcess(PROCESS_TERMINATE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
    const ULONGLONG start = startOf(process);
    if (start >= notBefore && TerminateProcess(process, EXIT_FAILURE) != 0) {
        for (const PROCESSENTRY32W &entry :
             processList().value_or(std::vector<PROCESSENTRY32W>())) {
            if (entry.th32ParentProcessID == id) {
                endTree(entry.th32ProcessID, start);
            }
        }
    }
    CloseHandle(process);
}

} // namespace

std::optional<QString> hookProgram(const QString &directory)
{
    for (const QString &name : {u"ZebekHook.exe"_s, u"ZebekHook.cmd"_s}) {
        const QFileInfo hook(QDir(directory), name);
        if (hook.isFile()) {
            return hook.filePath();
        }
    }
    return std::nullopt;
}

void prepareHook(QProcess &process, const QString &program, const QStringList &arguments)
{
    if (program.endsWith(u".exe"_s)) {
        process.setProgram(program);
        process.setArguments(arguments);
        return;
    }
    QString call = uR"(".\ZebekHook.cmd")"_s; // no path, for that may hold a percent sign
    for (const QString &argument : arguments) {
        call += u' ' + harmlessToCmd(argument);
    }
    process.setProgram(commandInterpreter());
    process.setNativeArguments(u"/d /v:off /c \"%1\""_s.arg(call));
}

QString whyNotRun(int /*exitCode*/)
{
    return {}; // the start fails then
}

void endHook(QProcess &process)
{
    endTree(static_cast<DWORD>(process.processId()));
}

} // namespace platform
