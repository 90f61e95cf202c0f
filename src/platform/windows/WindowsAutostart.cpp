#include "platform/windows/WindowsAutostart.h"

#include "platform/windows/Ansi.h"

#include <windows.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr const char *RunKey = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Run)";
constexpr const char *ValueName = "ZEBEK.EXE";

/// Opens the key, lets `use` work with it and returns the code of what failed or of that work.
template <typename Use>
std::uint32_t withRunKey(REGSAM access, Use use)
{
    HKEY key = nullptr;
    const LSTATUS opened = RegOpenKeyExA(HKEY_LOCAL_MACHINE, RunKey, 0, access, &key);
    if (opened != ERROR_SUCCESS) {
        return static_cast<std::uint32_t>(opened);
    }
    const LSTATUS used = use(key);
    RegCloseKey(key);
    return static_cast<std::uint32_t>(used);
}

} // namespace

std::uint32_t WindowsAutostart::query()
{
    return withRunKey(KEY_QUERY_VALUE, [](HKEY key) {
        return RegQueryValueExA(key, ValueName, nullptr, nullptr, nullptr, nullptr);
    });
}

std::uint32_t WindowsAutostart::write(const QString &program)
{
    if (!isAnsi(program)) {
        return ERROR_NO_UNICODE_TRANSLATION;
    }
    return withRunKey(KEY_ALL_ACCESS, [&](HKEY key) {
        const QByteArray command = toAnsi(program);
        return RegSetValueExA(key, ValueName, 0, REG_SZ,
                              reinterpret_cast<const BYTE *>(command.constData()),
                              static_cast<DWORD>(command.size() + 1)); // with the closing NUL
    });
}

std::uint32_t WindowsAutostart::remove()
{
    return withRunKey(KEY_ALL_ACCESS, [](HKEY key) { return RegDeleteValueA(key, ValueName); });
}

QString WindowsAutostart::place()
{
    return u"For every user of this machine; changing it takes an administrator."_s;
}

} // namespace platform
