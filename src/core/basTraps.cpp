#include "core/basTraps.h"

#include "core/basMain.h"
#include "core/clsErrors.h"
#include "core/clsZebek.h"
#include "platform/MessageBoxes.h"

#include <exception>

using namespace Qt::StringLiterals;

namespace {

QString nameOf(const Routine &routine)
{
    return QLatin1String(routine.module) + u'|' + QLatin1String(routine.name);
}

void tellHookOf(const Routine &routine, const platform::Failure &failure)
{
    if (routine.event &&
        (routine.event != HookEvent::LogError || gRoot->Errors()->admitsEventOf(nameOf(routine)))) {
        tellHook(*routine.event, {{"module", QLatin1String(routine.module)},
                                  {"routine", QLatin1String(routine.name)},
                                  {"number", QString::number(failure.number())},
                                  {"reason", failure.description()}});
    }
}

} // namespace

platform::Failure caughtFailure()
{
    try {
        throw;
    } catch (const platform::Failure &failure) {
        return failure;
    } catch (const std::exception &exception) {
        return {platform::Failure::Unexpected, QString::fromLocal8Bit(exception.what())};
    } catch (...) {
        return {platform::Failure::Unexpected, u"Unknown failure"_s};
    }
}

void recordFailure(const Routine &routine, const platform::Failure &failure)
{
    clsErrors *const errors = gRoot->Errors();
    if (errors != nullptr && (!routine.byStrangers || errors->admitsOneOfStrangers())) {
        errors->RecordError(QString::fromLatin1(routine.module), QString::fromLatin1(routine.name),
                            QString::fromLatin1(routine.id), failure.number(),
                            failure.description());
        if (!routine.byStrangers) { // who could make the operator's telephone ring all night
            tellHookOf(routine, failure);
        }
    }
}

void recordNewFailure(const Routine &routine, const platform::Failure &failure,
                      const QString &subject)
{
    clsErrors *const errors = gRoot->Errors();
    if (errors != nullptr &&
        errors->isNewReason(nameOf(routine), subject + failure.description())) {
        recordFailure(routine, failure);
    }
}

void noteSuccess(const Routine &routine)
{
    if (clsErrors *const errors = gRoot->Errors()) {
        errors->forgetReasons(nameOf(routine));
    }
}

int showFailure(const Routine &routine, const platform::Failure &failure, int buttons)
{
    return ShowErrorMessage(QString::fromLatin1(routine.module), QString::fromLatin1(routine.name),
                            QString::fromLatin1(routine.id), failure.number(),
                            failure.description(), buttons);
}

bool runWithRetry(const Routine &routine, const std::function<void()> &step, int alone)
{
    for (;;) {
        try {
            step();
            return true;
        } catch (...) {
            if (showFailure(routine, caughtFailure(), platform::RetryCancel + alone) !=
                platform::RetryButton) {
                return false;
            }
        }
    }
}
