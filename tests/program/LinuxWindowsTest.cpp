#include "platform/linux/LinuxWindows.h"

#include "program/GameDirectory.h"

#include <QWidget>

#include <gtest/gtest.h>

/// The windows of this very program, seen from outside as the tool sees a game server's.
static bool shows(const QStringList &expected)
{
    platform::LinuxWindows windows;
    QStringList captions;
    const auto asExpected = [&] {
        captions.clear();
        for (const platform::WindowHandle window : windows.topLevel()) {
            if (windows.owner(window) == getpid()) {
                captions.append(windows.caption(window, 511));
            }
        }
        return captions == expected;
    };
    return waitUntil(asExpected, 10000);
}

static bool framesNewWindows()
{
    QWidget probe;
    probe.show();
    return waitUntil([&] { return probe.frameGeometry() != probe.geometry(); }, 200);
}

TEST(LinuxWindows, AreListedTopmostFirstAndCloseOnRequestWithAndWithoutAWindowManager)
{
    QProcess manager;
    for (const bool managed : {false, true}) {
        if (managed) {
            manager.start(u"openbox"_s, {});
            ASSERT_TRUE(waitUntil(framesNewWindows, 10000));
        }
        QWidget first;
        first.setWindowTitle(u"First – Zürich"_s);
        first.show();
        ASSERT_TRUE(shows({u"First – Zürich"_s}));
        QWidget second;
        second.setWindowTitle(u"Second"_s);
        second.show();
        ASSERT_TRUE(shows({u"Second"_s, u"First – Zürich"_s})) << managed;
        first.raise();
        EXPECT_TRUE(shows({u"First – Zürich"_s, u"Second"_s})) << managed;

        platform::LinuxWindows windows;
        windows.postClose(windows.topLevel().front());
        EXPECT_TRUE(waitUntil([&] { return !first.isVisible(); }, 10000));
        EXPECT_TRUE(shows({u"Second"_s})) << managed;
        EXPECT_EQ(windows.caption(1, 511), QString()) << "a window that is not there";
        EXPECT_EQ(windows.owner(1), 0);
    }
    manager.kill();
    manager.waitForFinished();
}
