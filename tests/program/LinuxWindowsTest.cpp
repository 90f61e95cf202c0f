#include "platform/linux/LinuxWindows.h"

#include "program/GameDirectory.h"

#include <QWidget>

#include <gtest/gtest.h>

static QString told(const QString &command)
{
    QProcess tool;
    tool.start(command.section(u' ', 0, 0), command.split(u' ').mid(1));
    tool.waitForFinished();
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}

/// The windows of this program, topmost first, each as "number caption owner": by the X server's
/// own tools.
static QStringList byXTools()
{
    QStringList result;
    static const QRegularExpression ours(uR"((0x[0-9a-f]+) [^\n]*: \("zebek_program_tests")"_s);
    for (const auto &match : ours.globalMatch(told(u"xwininfo -root -tree"_s))) {
        const QString window = match.captured(1);
        if (told(u"xwininfo -id "_s + window).contains(u"IsViewable"_s)) {
            result.append(QStringList{QString::number(window.toUInt(nullptr, 16)),
                                      told(u"xdotool getwindowname "_s + window),
                                      told(u"xdotool getwindowpid "_s + window)}
                              .join(u' '));
        }
    }
    return result;
}

/// The same as the tool sees a game server's.
static QStringList byTool()
{
    QStringList result;
    platform::LinuxWindows windows;
    for (const platform::WindowHandle window : windows.topLevel()) {
        const platform::ProcessId owner = windows.owner(window);
        if (owner == getpid()) {
            result.append(u"%1 %2 %3"_s.arg(window).arg(windows.caption(window, 511)).arg(owner));
        }
    }
    return result;
}

static bool shows(const QStringList &captions)
{
    const auto asExpected = [&] {
        const QStringList windows = byXTools();
        QStringList seen;
        for (const QString &window : windows) {
            seen.append(window.section(u' ', 1, -2));
        }
        return seen == captions && byTool() == windows;
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
                told(u"xdotool set_num_desktops 2"_s);
                return told(u"xdotool get_num_desktops"_s) == u'2';
            };
            ASSERT_TRUE(waitUntil(handlesEvents, StartMilliseconds));
        }
        QWidget first;
        first.setWindowTitle(u"First – Zürich"_s);
        first.show();
        ASSERT_TRUE(shows({u"First – Zürich"_s})) << managed;
        QWidget second;
        second.setWindowTitle(u"Second"_s);
        second.show();
        ASSERT_TRUE(shows({u"Second"_s, u"First – Zürich"_s})) << managed;
        first.raise();
        EXPECT_TRUE(shows({u"First – Zürich"_s, u"Second"_s})) << managed;

        platform::LinuxWindows windows;
        windows.postClose(static_cast<platform::WindowHandle>(first.winId()));
        EXPECT_TRUE(shows({u"Second"_s})) << managed;
        EXPECT_FALSE(first.isVisible());
        if (!managed) { // as where a window manager without lists frames the windows
            QWidget frame(nullptr, Qt::X11BypassWindowManagerHint);
            new QWidget(&frame);
            auto *const client = new QWidget(&frame);
            const QString id = QString::number(client->winId());
            frame.show();
            told(u"xprop -id %1 -f WM_STATE 32c -set WM_STATE 1"_s.arg(id));
            EXPECT_EQ(windows.topLevel().front(), client->winId());
        }
        EXPECT_EQ(windows.caption(1, 511), QString()) << "a window that is not there";
        EXPECT_EQ(windows.owner(1), 0);
    }
    manager.kill();
    manager.waitForFinished();
}
