#include "platform/HookRunner.h"
#include "platform/windows/WindowsProcesses.h"

#include <QtTest/QtTest>

#include <algorithm>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

class WindowsHook : public testing::Test
{
protected:
    void run(platform::HookRunner &runner, const QByteArray &script, const QStringList &arguments)
    {
        QFile file(directory.filePath(u"ZebekHook.cmd"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("@echo off\r\n" + QByteArray(script).replace('\n', "\r\n"));
        file.close();
        runner.run(directory.path(), arguments, [this](const auto &failure) {
            failures += failure ? QStringList(failure->description()) : QStringList();
        });
    }
    QString read(const QString &name) const
    {
        QFile file(directory.filePath(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    QTemporaryDir directory;
    QStringList failures;
};

TEST_F(WindowsHook, EachHostileArgumentIsOneAndNothingOfItRunsWithOrWithoutQuotes)
{
    const QStringList hostile{u"ended"_s,
                              uR"(a=" & mkdir x & rem ")"_s,
                              u"b & mkdir x"_s,
                              u"c | mkdir x"_s,
                              u"d > x 2> x < x"_s,
                              u"%COMSPEC% %~f0 %%x"_s,
                              u"f ^ ^^ !COMSPEC!"_s,
                              u"g) else (mkdir x"_s,
                              u"Jäger 日本  "_s,
                              u""_s,
                              u"last"_s};
    QStringList plain = hostile;
    plain.replaceInStrings(QRegularExpression(uR"(["%&|<>^!()])"_s), u"_"_s);
    const QString quoted = u'"' + plain.join(u"\"\r\n\""_s) + u"\"\r\n"_s;
    platform::HookRunner runner;
    run(runner, R"(chcp 65001 >nul
set left=11
:next
>>plain echo.%~1
>>quoted echo."%~1"
if 1==0 (echo %~1)
shift
set /a left=left-1
if %left% gtr 0 goto next
mkdir done
)",
        hostile);
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return QDir(directory.filePath(u"done"_s)).exists(); }, 30000));
    EXPECT_EQ(read(u"plain"_s), plain.join(u"\r\n"_s) + u"\r\n"_s);
    EXPECT_EQ(read(u"quoted"_s), quoted);
    EXPECT_FALSE(QFile::exists(directory.filePath(u"x"_s)));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(WindowsHook, OneThatHangsIsEndedWithWhatItStarted)
{
    const auto interpreters = [] {
        const auto all = platform::WindowsProcesses().snapshot().value();
        return std::count_if(all.begin(), all.end(), [](const platform::ProcessEntry &entry) {
            return entry.executable.compare(u"cmd.exe"_s, Qt::CaseInsensitive) == 0;
        });
    };
    const auto before = interpreters();
    platform::HookRunner runner(std::chrono::seconds(10));
    run(runner, "cmd /c \"for /l %%x in (1,0,2) do @rem\"\n", {u"ended"_s});
    EXPECT_TRUE(QTest::qWaitFor([&] { return interpreters() == before + 2; }, 10000));
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return interpreters() == before && !failures.isEmpty(); }, 30000));
    EXPECT_TRUE(
        failures.value(0).endsWith(u"/ZebekHook.cmd: It did not end in time and was ended"_s));
}
