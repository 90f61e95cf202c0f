#pragma once

#include "platform/Processes.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace platform {

using WindowHandle = std::uint32_t;

/// The desktop's top-level windows, those of other programs included. A window may vanish between
/// two calls; it then has no caption and no owner.
class Windows
{
public:
    virtual ~Windows() = default;

    /// The top-level windows in stacking order, the topmost first.
    virtual std::vector<WindowHandle> topLevel() = 0;
    /// The caption, at most `maximumLength` characters of it.
    virtual QString caption(WindowHandle window, int maximumLength) = 0;
    /// The process that owns the window; 0 when unknown.
    virtual ProcessId owner(WindowHandle window) = 0;
    /// Asks the window to close, as its close box does, and does not wait for it.
    virtual void postClose(WindowHandle window) = 0;
};

} // namespace platform
