#include "platform/linux/LinuxWindows.h"

#include "program/GameDirectory.h"

#include <QWidget>

#include <gtest/gtest.h>
#include <unistd.h>

/// Whether these are this program's windows, topmost first, as the tool sees a game server's.
static bool sees(const std::vector<QWidget *> &widgets)
{
    QStringList expected;
    for (const QWidget *const widget : widgets) {
        expected.append(u"%1 %2"_s.arg(widget->winId()).arg(widget->windowTitle()));
    }
    platform::LinuxWindows windows;
    const auto asExpected = [&] {
        QStringList seen;
        for (const platform::WindowHandle window : windows.topLevel()) {
            if (windows.owner(window) == ::getpid()) {
                seen.append(u"%1 %2"_s.arg(window).arg(windows.caption(window, 511)));
            }
        }
        return seen == expected;
    };
    return waitUntil(asExpected, StartMilliseconds);
}

TEST(LinuxWindows, AreListedTopmostFirstAndCloseOnRequestWithAndWithoutAWindowManager)
{
    QProcess manager;
    for (const bool managed : {false, true}) {
        if (managed) {
            // A window that comes before it handles events may never be shown. When it does, it
            // does as it is told.
            manager.start(u"openbox"_s, QStringList());
            const auto handlesEvents = [] {
                QProcess tool;
                QProcess::execute(u"xdotool"_s, {u"set_num_desktops"_s, u"2"_s});
                tool.start(u"xdotool"_s, {u"get_num_desktops"_s});
                return tool.waitForFinished() && tool.readAll().trimmed() == "2";
            };
            ASSERT_TRUE(waitUntil(handlesEvents, StartMilliseconds));
        }
        QWidget first;
        first.setWindowTitle(u"First – Zürich"_s);
        first.show();
        ASSERT_TRUE(sees({&first})) << managed;
        QWidget second;
        second.setWindowTitle(u"Second"_s);
        second.show();
        ASSERT_TRUE(sees({&second, &first})) << managed;
        first.raise();
        EXPECT_TRUE(sees({&first, &second})) << managed;
        platform::LinuxWindows windows;
        windows.postClose(static_cast<platform::WindowHandle>(first.winId()));
        EXPECT_TRUE(sees({&second})) << managed;
        EXPECT_FALSE(first.isVisible());
        EXPECT_EQ(windows.caption(1, 511), QString()) << "a window that is not there";
        EXPECT_EQ(windows.owner(1), 0);
    }
    manager.kill();
    manager.waitForFinished();
}
