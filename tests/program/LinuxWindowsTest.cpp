#include "platform/linux/LinuxWindows.h"

#include "program/GameDirectory.h"

#include <QProcess>
#include <QStandardPaths>
#include <QWidget>

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

namespace {

/// The windows of this very program, seen from outside as the tool sees a game server's.
class LinuxWindowsTest : public testing::TestWithParam<bool>
{
protected:
    void SetUp() override
    {
        if (GetParam()) {
            manager.start(QStringLiteral("openbox"), {});
            ASSERT_TRUE(manager.waitForStarted());
            const auto framesNewWindows = [] {
                QWidget probe;
                probe.show();
                return waitUntil([&] { return probe.frameGeometry() != probe.geometry(); }, 200);
            };
            ASSERT_TRUE(waitUntil(framesNewWindows, 10000));
        }
    }
    ~LinuxWindowsTest() override
    {
        manager.kill();
        manager.waitForFinished();
    }

    std::unique_ptr<QWidget> window(const QString &caption)
    {
        auto result = std::make_unique<QWidget>();
        result->setWindowTitle(caption);
        result->resize(200, 100);
        result->show();
        return result;
    }
    QStringList captions()
    {
        QStringList result;
        for (const platform::WindowHandle handle : windows.topLevel()) {
            if (windows.owner(handle) == getpid()) {
                result.append(windows.caption(handle, 511));
            }
        }
        return result;
    }
    bool shows(const QStringList &expected)
    {
        return waitUntil([&] { return captions() == expected; }, 10000);
    }

    QProcess manager;
    platform::LinuxWindows windows;
};

} // namespace

TEST_P(LinuxWindowsTest, ListsThemTopmostFirstAndClosesOne)
{
    const auto first = window(QStringLiteral("First – Zürich"));
    ASSERT_TRUE(shows({QStringLiteral("First – Zürich")}));
    const auto second = window(QStringLiteral("Second"));
    ASSERT_TRUE(shows({QStringLiteral("Second"), QStringLiteral("First – Zürich")}))
        << captions().join(u'|').toStdString();
    first->raise();
    EXPECT_TRUE(shows({QStringLiteral("First – Zürich"), QStringLiteral("Second")}))
        << captions().join(u'|').toStdString();

    windows.postClose(windows.topLevel().front());
    EXPECT_TRUE(waitUntil([&] { return !first->isVisible(); }, 10000));
    EXPECT_TRUE(second->isVisible());
    EXPECT_TRUE(shows({QStringLiteral("Second")}));
    EXPECT_EQ(windows.caption(1, 511), QString()) << "a window that is not there";
    EXPECT_EQ(windows.owner(1), 0);
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutWindowManager, LinuxWindowsTest, testing::Bool(),
                         [](const auto &mode) { return mode.param ? "Managed" : "Bare"; });
