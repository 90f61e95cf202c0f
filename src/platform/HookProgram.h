#pragma once

#include <QStringList>

#include <optional>

class QProcess;

/// How a hook is run, which is each system's own matter.
namespace platform {

/// The path of the hook in this directory; nothing where there is none.
std::optional<QString> hookProgram(const QString &directory);
/// Lets `process` run the hook with these arguments, so that each reaches it as one.
void prepareHook(QProcess &process, const QString &program, const QStringList &arguments);
/// Why a hook that has ended with this code could not be run; empty where it could.
QString whyNotRun(int exitCode);
/// Ends a hook by force, and what it has started.
void endHook(QProcess &process);

} // namespace platform
