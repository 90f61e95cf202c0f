#include "core/basSystem.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsErrors.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"
#include "platform/SystemMessage.h"

namespace {

using platform::Autostart;

/// A buffer of 4096 characters, of which the last ends the text.
constexpr int MaximumLength = 4095;

void report(const char *routine, std::uint32_t code)
{
    const QString module = QStringLiteral("System Module");
    const QString name = QString::fromLatin1(routine);
    const auto number = static_cast<int>(code);
    const QString text = FormatAPIResultMessage(code);
    if (clsErrors *const errors = gRoot->Errors()) {
        errors->RecordError(module, name, QStringLiteral("None"), number, text);
    }
    ShowErrorMessage(module, name, QStringLiteral("-"), number, text, platform::OkOnly);
}

} // namespace

bool GetRunOnStartup()
{
    const std::uint32_t code = gRoot->Machine().autostart.query();
    if (code != Autostart::Success && code != Autostart::NotFound) {
        report("GetRunOnStartup", code);
    }
    return code == Autostart::Success;
}

bool SetRunOnStartup(bool in_blnState)
{
    Autostart &autostart = gRoot->Machine().autostart;
    const std::uint32_t code =
        in_blnState ? autostart.write(gRoot->RootDirectory() + QStringLiteral("ZebekSuite.exe"))
                    : autostart.remove();
    if (code == Autostart::Success) {
        return in_blnState;
    }
    const bool current = GetRunOnStartup();
    report("SetRunOnStartup", code);
    return current;
}

QString FormatAPIResultMessage(std::uint32_t code)
{
    return Trap({"System Module", "FormatAPIResultMessage", "None"},
                [code] { return platform::systemMessage(code).left(MaximumLength); });
}
