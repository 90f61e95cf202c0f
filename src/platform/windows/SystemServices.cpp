#include "platform/SystemServices.h"

#include "platform/windows/Ansi.h"

#include <QDir>
#include <QProcess>

#include <windows.h>

#include <array>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace platform {

bool openOnDesktop(const QString &path)
{
    QProcess explorer;
    explorer.setProgram(u"explorer.exe"_s);
    // Always in quotes: it takes a comma for the end of a path.
    explorer.setNativeArguments(u"\"%1\""_s.arg(QDir::toNativeSeparators(QDir::cleanPath(path))));
    return explorer.startDetached();
}

QByteArray pathKey(const QString &path)
{
    return path.toLower().toUtf8();
}

QString systemMessage(std::uint32_t code)
{
    std::array<char, 4096> text{};
    const DWORD length =
        FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                       text.data(), static_cast<DWORD>(text.size()), nullptr);
    return fromAnsi(text.data(), static_cast<qsizetype>(length));
}

/// Neither happens there.
void secureStandardStreams() {}

/// A program with windows has none unless it is given one.
void tellOnStandardError(const QString &text)
{
    static_cast<void>(std::fputs((text.toLocal8Bit() + '\n').constData(), stderr));
}

void tellOnStandardOutput(const QString &text)
{
    // One that was redirected is there; a console is the starter's.
    if (GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_UNKNOWN &&
        (AttachConsole(ATTACH_PARENT_PROCESS) == 0 ||
         std::freopen("CONOUT$", "w", stdout) == nullptr)) {
        return;
    }
    static_cast<void>(std::fputs((text.toLocal8Bit() + '\n').constData(), stdout));
    static_cast<void>(std::fflush(stdout));
}

void letOthersComeToFront()
{
    AllowSetForegroundWindow(ASFW_ANY); // refused where there is nothing to let
}

} // namespace platform
