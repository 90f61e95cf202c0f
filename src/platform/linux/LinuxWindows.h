#pragma once

#include "platform/Windows.h"

#include <memory>
#include <xcb/xcb_ewmh.h>

namespace platform {

/// The windows of the X server that DISPLAY names, over a connection of its own. Without an X
/// server there are no windows. Top-level windows are the ones that a window manager lists as its
/// own or, where none does, the ones on the screen that one manages or would manage.
class LinuxWindows final : public Windows
{
public:
    LinuxWindows();
    LinuxWindows(const LinuxWindows &) = delete;
    LinuxWindows &operator=(const LinuxWindows &) = delete;
    ~LinuxWindows() override;

    std::vector<WindowHandle> topLevel() override;
    QString caption(WindowHandle window, int maximumLength) override;
    ProcessId owner(WindowHandle window) override;
    void postClose(WindowHandle window) override;

private:
    struct Connection;

    Connection *connection();
    std::unique_ptr<Connection> m_connection;
};

} // namespace platform
