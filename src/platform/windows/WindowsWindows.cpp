#include "platform/windows/WindowsWindows.h"

#include "platform/windows/Ansi.h"

#include <windows.h>

namespace platform {

namespace {

HWND handleOf(WindowHandle window)
{
    return static_cast<HWND>(LongToHandle(static_cast<long>(window)));
}

BOOL CALLBACK append(HWND window, LPARAM list)
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the system hands on what topLevel() has given it
    reinterpret_cast<std::vector<WindowHandle> *>(list)->push_back(
        static_cast<WindowHandle>(HandleToULong(window)));
    return TRUE;
}

} // namespace

/// The system hands out the list as it is at one moment; going from one window to the next by
/// itself could go in circles while the order changes.
std::vector<WindowHandle> WindowsWindows::topLevel()
{
    std::vector<WindowHandle> result;
    EnumWindows(append, reinterpret_cast<LPARAM>(&result));
    return result;
}

QString WindowsWindows::caption(WindowHandle window, int maximumLength)
{
    QByteArray text(maximumLength + 1, ' '); // its end is marked by a NUL
    const int length = GetWindowTextA(handleOf(window), text.data(), static_cast<int>(text.size()));
    return length > 0 ? fromAnsi(text.constData(), length) : QString();
}

ProcessId WindowsWindows::owner(WindowHandle window)
{
    DWORD id = 0;
    GetWindowThreadProcessId(handleOf(window), &id);
    return static_cast<ProcessId>(id);
}

void WindowsWindows::postClose(WindowHandle window)
{
    PostMessageA(handleOf(window), WM_CLOSE, 0, 0);
}

} // namespace platform
