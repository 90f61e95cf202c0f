#include "server/basWINAPI.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"

#include <algorithm>

namespace {

constexpr Module Here{"WINAPI", "None"};
/// A buffer of 512 characters, of which the last ends the text.
constexpr int MaximumCaption = 511;

} // namespace

std::vector<platform::WindowHandle> fnFindWindows(const QString &text)
{
    return trap(Here("fnFindWindows"), [&] {
        std::vector<platform::WindowHandle> found;
        for (const platform::WindowHandle window : gRoot->Machine().windows.topLevel()) {
            if (fnGetWindowCaption(window).contains(text) &&
                std::find(found.begin(), found.end(), window) == found.end()) {
                found.push_back(window);
            }
        }
        return found;
    });
}

QString fnGetWindowCaption(platform::WindowHandle window)
{
    return trap(Here("fnGetWindowCaption"),
                [&] { return gRoot->Machine().windows.caption(window, MaximumCaption); });
}

bool fnIsWindowsNT()
{
    return gRoot->Machine().processes.systemVersion() >= 0;
}
