#include "platform/HookRunner.h"

#include "platform/HookProgram.h"

#include <QProcess>
#include <QTimer>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

void HookRunner::run(const QString &directory, const QStringList &arguments, Failed failed)
{
    if (!hookProgram(directory)) {
        return;
    }
    if (m_waiting.size() == MostWaiting) {
        failed({Failure::Overflow,
                u"%1 events wait for the hook already; one was left out"_s.arg(MostWaiting)});
        return;
    }
    m_waiting.push_back({directory, arguments, std::move(failed)});
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
    if (!program) {
        return; // removed meanwhile
    }
    // Has no owner, so that the end of this program is not that of the hook.
    auto *const process = new QProcess;
    process->setWorkingDirectory(call.directory);
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->setStandardInputFile(QProcess::nullDevice());
    prepareHook(*process, *program, call.arguments);
    QObject::connect(
        process, &QProcess::errorOccurred, &m_events,
        [this, process, program, failed = call.failed](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                failed({Failure::PathAccess, u"%1: %2"_s.arg(*program, process->errorString())});
                forget(process);
            }
        });
    QObject::connect(
        process, &QProcess::finished, &m_events,
        [this, process, program, failed = call.failed](int exitCode, QProcess::ExitStatus status) {
            const QString reason = status == QProcess::NormalExit ? whyNotRun(exitCode) : QString();
            if (!reason.isEmpty()) {
                failed({Failure::PathAccess, u"%1: %2"_s.arg(*program, reason)});
            }
            forget(process);
        });
    QTimer::singleShot(m_limit, process, [process, program, failed = call.failed] {
        if (process->state() == QProcess::NotRunning) {
            return;
        }
        failed({Failure::Unexpected, u"%1 did not end in time and was ended"_s.arg(*program)});
        endHook(*process);
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
