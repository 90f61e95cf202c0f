#include "platform/HookRunner.h"

#include "platform/HookProgram.h"

#include <QProcess>
#include <QTimer>
#include <QVariant>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr char TookTooLong[] = "tookTooLong";

/// Why a hook did not run to its end; empty where it did.
QString reasonOf(const QProcess &process, int exitCode)
{
    if (process.property(TookTooLong).toBool()) {
        return u"It did not end in time and was ended"_s;
    }
    return process.exitStatus() == QProcess::NormalExit ? whyNotRun(exitCode) : QString();
}

} // namespace

void HookRunner::run(const QString &directory, const QStringList &arguments, Done done)
{
    if (!hookProgram(directory)) {
        return;
    }
    if (m_waiting.size() == MostWaiting) {
        done(Failure(Failure::Overflow,
                     u"%1 events wait for the hook already; one was left out"_s.arg(MostWaiting)));
        return;
    }
    m_waiting.push_back({directory, arguments, std::move(done)});
    startWaiting();
}

void HookRunner::startWaiting()
{
    while (m_running < MostAtOnce && !m_waiting.empty()) {
        const Call call = std::move(m_waiting.front());
        m_waiting.pop_front();
        start(call);
    }
}

void HookRunner::start(const Call &call)
{
    const std::optional<QString> program = hookProgram(call.directory);
    if (!program) { // removed meanwhile
        call.done({});
        return;
    }
    // Has no owner, so that the end of this program is not that of the hook.
    auto *const process = new QProcess;
    process->setWorkingDirectory(call.directory);
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->setStandardInputFile(QProcess::nullDevice());
    prepareHook(*process, *program, call.arguments);

    const auto fail = [program = *program, done = call.done](const QString &reason) {
        done(Failure(Failure::PathAccess, program + u": "_s + reason));
    };
    QObject::connect(process, &QProcess::errorOccurred, &m_events,
                     [this, process, fail](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart) {
                             fail(process->errorString());
                             forget(process);
                         }
                     });
    QObject::connect(process, &QProcess::finished, &m_events,
                     [this, process, fail, done = call.done](int exitCode) {
                         const QString reason = reasonOf(*process, exitCode);
                         if (reason.isEmpty()) {
                             done({});
                         } else {
                             fail(reason);
                         }
                         forget(process);
                     });
    QTimer::singleShot(m_limit, process, [process] {
        if (process->state() != QProcess::NotRunning) {
            process->setProperty(TookTooLong, true);
            endHook(*process);
        }
    });
    ++m_running;
    process->start();
}

void HookRunner::forget(QProcess *process)
{
    process->deleteLater();
    --m_running;
    startWaiting();
}

} // namespace platform
