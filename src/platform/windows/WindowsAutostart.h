#pragma once

#include "platform/Autostart.h"

namespace platform {

/// The value "ZEBEK.EXE" (REG_SZ, the program's path without quotes) of the key
/// HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Run, whose programs the system runs
/// for every user who logs on. Changing it takes an administrator.
class WindowsAutostart final : public Autostart
{
public:
    std::uint32_t query() override;
    std::uint32_t write(const QString &program) override;
    std::uint32_t remove() override;
    QString place() override;
};

} // namespace platform
