#include "platform/HookProgram.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

#include <windows.h>

#include <array>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// By its full path, since a name alone would be looked for beside this program first.
QString systemProgram(const QString &name)
{
    std::array<wchar_t, MAX_PATH> folder{};
    const UINT length = GetSystemDirectoryW(folder.data(), MAX_PATH);
    return QString::fromWCharArray(folder.data(), static_cast<qsizetype>(length)) + u'\\' + name;
}

/// cmd puts the text of an argument into the lines of the script and only then looks for quotes and
/// operators. So what it would take for one becomes an underscore: no text can become a command,
/// not even where the script forgets the quotes.
QString harmlessToCmd(QString argument)
{
    static const QRegularExpression special(uR"(["%&|<>^!])"_s);
    return u'"' + argument.replace(special, u"_"_s) + u'"';
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
    process.setProgram(systemProgram(u"cmd.exe"_s));
    process.setNativeArguments(u"/d /v:off /c \"%1\""_s.arg(call));
}

QString whyNotRun(int /*exitCode*/)
{
    return {}; // the start fails then
}

void endHook(QProcess &process)
{
    const QStringList wholeTree{u"/f"_s, u"/t"_s, u"/pid"_s, QString::number(process.processId())};
    if (!QProcess::startDetached(systemProgram(u"taskkill.exe"_s), wholeTree)) {
        process.kill();
    }
}

} // namespace platform
