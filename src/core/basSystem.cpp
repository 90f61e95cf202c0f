#include "core/basSystem.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/Failure.h"
#include "platform/Machine.h"
#include "platform/SystemServices.h"

#include <algorithm>
#include <functional>
#include <initializer_list>

using namespace Qt::StringLiterals;

namespace {

using platform::Autostart;

constexpr std::uint32_t GeneralFailure = 31;
/// A buffer of 4096 characters, of which the last ends the text.
constexpr int MaximumLength = 4095;

constexpr Module Here{"System Module", "None"};

/// The box goes by itself, since the state is asked for at the start, too, where nobody may be
/// there.
void report(const char *routine, const platform::Failure &failure)
{
    recordFailure(Here(routine), failure);
    showFailure({Here.name, routine, "-"}, failure, platform::AcceptsAlone);
}

/// Runs the body and reports its failure, or the Windows error code where it is not expected.
std::uint32_t reported(const char *routine, std::initializer_list<std::uint32_t> expected,
                       const std::function<std::uint32_t()> &body)
{
    std::uint32_t code = GeneralFailure;
    try {
        code = body();
        if (std::find(expected.begin(), expected.end(), code) == expected.end()) {
            report(routine, {static_cast<int>(code), FormatAPIResultMessage(code)});
        }
    } catch (const platform::Failure &failure) {
        report(routine, failure);
    }
    return code;
}

} // namespace

bool GetRunOnStartup()
{
    const std::uint32_t code =
        reported("GetRunOnStartup", {Autostart::Success, Autostart::NotFound},
                 [] { return gRoot->Machine().autostart.query(); });
    return code == Autostart::Success;
}

bool SetRunOnStartup(bool in_blnState)
{
    const std::uint32_t code = reported("SetRunOnStartup", {Autostart::Success}, [in_blnState] {
        Autostart &autostart = gRoot->Machine().autostart;
        return in_blnState ? autostart.write(gRoot->RootDirectory() + u"ZebekSuite.exe"_s)
                           : autostart.remove();
    });
    return code == Autostart::Success ? in_blnState : GetRunOnStartup();
}

QString FormatAPIResultMessage(std::uint32_t code)
{
    return trap(Here("FormatAPIResultMessage"),
                [code] { return platform::systemMessage(code).left(MaximumLength); });
}
