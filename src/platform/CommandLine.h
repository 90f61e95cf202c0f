#pragma once

#include <QStringList>

namespace platform {

/// Splits a command line into the program and its arguments by the rules that Windows' C run time
/// applies: the program ends at its closing quote or, unquoted, at the first blank; in the
/// arguments a quote groups, 2n backslashes before a quote are n backslashes, 2n+1 are n and a
/// quote that is a character, and two quotes within a quoted stretch are one character.
QStringList splitCommandLine(const QString &commandLine);

} // namespace platform
