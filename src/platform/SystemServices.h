#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

/// Small services of the system that Qt lacks.
namespace platform {

/// Shows a folder in the desktop's file manager, or a file in its program for files of that kind,
/// without waiting for it. False where there is none.
bool openOnDesktop(const QString &path);

/// Tells paths from one another, as the system does: on Windows letters may be large or small.
QByteArray pathKey(const QString &path);

/// The system's text for a Windows error code, in the words of the system that runs; empty for a
/// code that it has no text for. The text may end in a line break.
QString systemMessage(std::uint32_t code);

/// Keeps what is written to the standard streams harmless: a stream that was closed would be the
/// next file or socket that is opened, and one whose reader has gone would end the process. To be
/// called before anything else.
void secureStandardStreams();

/// Writes a line to the standard error, if somebody takes it at once: a reader that stopped must
/// not stop this program. Of a long text the beginning is written.
void tellOnStandardError(const QString &text);

/// Writes a text to the standard output and waits until it is taken. On Windows, where a program
/// with windows has none, it goes to the console from which the program was started.
void tellOnStandardOutput(const QString &text);

/// Lets another program bring its window to the front, which Windows allows only to the one that
/// the user has started last.
void letOthersComeToFront();

} // namespace platform
