#include "core/Hook.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype LongestValue = 500;

/// Its failures are no events, or one that fails would be told of that again.
constexpr Routine Telling{"Hook", "tellHook", "None", false, std::nullopt};

QString nameOf(HookEvent event)
{
    switch (event) {
    case HookEvent::Started:
        return u"started"_s;
    case HookEvent::Found:
        return u"found"_s;
    case HookEvent::Ended:
        return u"ended"_s;
    case HookEvent::Hung:
        return u"hung"_s;
    case HookEvent::Restarted:
        return u"restarted"_s;
    case HookEvent::StartFailed:
        return u"start-failed"_s;
    case HookEvent::Looping:
        return u"looping"_s;
    case HookEvent::MatchArchived:
        return u"match-archived"_s;
    case HookEvent::ArchiveFailed:
        return u"archive-failed"_s;
    case HookEvent::LogError:
        return u"log-error"_s;
    }
    return {};
}

QString argumentOf(const HookValue &value)
{
    QString text = value.value.left(LongestValue);
    std::ranges::replace_if(
        text, [](QChar c) { return c.category() == QChar::Other_Control; }, u' ');
    return QLatin1String(value.key) + u'=' + text;
}

} // namespace

void tellHook(HookEvent event, std::initializer_list<HookValue> values)
{
    const platform::Machine &machine = gRoot->Machine();
    QStringList arguments{nameOf(event),
                          argumentOf({"time", machine.clock.now().toString(Qt::ISODate)})};
    for (const HookValue &value : values) {
        arguments.append(argumentOf(value));
    }
    machine.hooks.run(gRoot->RootDirectory(), arguments, [](const auto &failure) {
        if (failure) {
            recordNewFailure(Telling, *failure);
        } else {
            noteSuccess(Telling);
        }
    });
}
