#pragma once

#include "core/Hook.h"
#include "platform/Failure.h"

#include <QString>

#include <functional>
#include <optional>
#include <type_traits>

/// Where a failure is reported from: the module's display name, the routine and the context,
/// whether whoever reaches the web site can make it fail, and the event that its failure is.
struct Routine
{
    const char *module = nullptr;
    const char *name = nullptr;
    const char *id = nullptr;
    bool byStrangers = false;
    std::optional<HookEvent> event = HookEvent::LogError;
};

/// A module as records name it, and the context of its routines: gives the routines.
struct Module
{
    const char *name = nullptr;
    const char *id = nullptr;
    bool byStrangers = false;

    constexpr Routine operator()(const char *routine, HookEvent event = HookEvent::LogError) const
    {
        return {name, routine, id, byStrangers, event};
    }
};

/// The exception that is being handled.
platform::Failure caughtFailure();

/// Makes a record in the error log, which takes so many a minute of those that strangers cause.
void recordFailure(const Routine &routine, const platform::Failure &failure);

/// Runs the body of a routine. A failure becomes a record in the error log; the result is then the
/// default of its type. Nothing leaves the routine.
template <typename Body>
std::invoke_result_t<Body> trap(const Routine &routine, Body body)
{
    try {
        return body();
    } catch (...) {
        recordFailure(routine, caughtFailure());
        return std::invoke_result_t<Body>();
    }
}

/// The body of a routine that also leaves the description of its failure in `reason`.
template <typename Body>
auto withReason(QString &reason, Body body)
{
    return [&reason, body] {
        try {
            return body();
        } catch (...) {
            reason = caughtFailure().description();
            throw;
        }
    };
}

/// Makes a record unless the routine has failed for the same reason since it last succeeded.
void recordNewFailure(const Routine &routine, const platform::Failure &failure,
                      const QString &subject = {});
void noteSuccess(const Routine &routine);

/// As trap(), for a routine that is tried again and again until it succeeds: each reason for which
/// it fails is recorded once. A reason counts as new for another subject.
template <typename Body>
std::invoke_result_t<Body> trapRepeated(const Routine &routine, Body body,
                                        const QString &subject = {})
{
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
            body();
            noteSuccess(routine);
        } else {
            std::invoke_result_t<Body> result = body();
            noteSuccess(routine);
            return result;
        }
    } catch (...) {
        recordNewFailure(routine, caughtFailure(), subject);
        return std::invoke_result_t<Body>();
    }
}

/// Runs one step of a routine that goes on with the next one whatever becomes of this one.
template <typename Step>
void skipFailure(Step step)
{
    try {
        step();
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
}

/// Shows a failure in a message box with those buttons (platform::MessageBoxStyle); the result is
/// the one pressed.
int showFailure(const Routine &routine, const platform::Failure &failure, int buttons);

/// Runs one step and shows a failure in a message box with Retry and Cancel: Retry runs the step
/// again, Cancel gives up. True when the step ended well.
bool runWithRetry(const Routine &routine, const std::function<void()> &step);
