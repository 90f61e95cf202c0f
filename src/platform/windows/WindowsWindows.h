#pragma once

#include "platform/Windows.h"

namespace platform {

/// The windows of the session's desktop. A window's handle has no more than 32 bits, in programs of
/// 64 bits too.
class WindowsWindows final : public Windows
{
public:
    std::vector<WindowHandle> topLevel() override;
    QString caption(WindowHandle window, int maximumLength) override;
    ProcessId owner(WindowHandle window) override;
    void postClose(WindowHandle window) override;
};

} // namespace platform
