#include "platform/HookRunner.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest/QtTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

class HookRunnerTest : public testing::Test
{
protected:
    void writeHook(const QByteArray &script, QFile::Permissions permissions = QFile::ExeOwner) const
    {
        QFile file(directory.filePath(u"ZebekHook"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script);
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | permissions);
    }
    void run(platform::HookRunner &runner, const QStringList &arguments)
    {
        runner.run(directory.path(), arguments, [this](const auto &failure) {
            failures += failure ? QStringList(failure->description()) : QStringList();
        });
    }
    QByteArray written() const
    {
        QFile file(directory.filePath(u"written"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    bool comes(const QByteArray &text) const
    {
        return QTest::qWaitFor([&] { return written() == text; }, 20000);
    }

    QTemporaryDir directory;
    QStringList failures;
};

TEST_F(HookRunnerTest, EachArgumentArrivesAsItIsInTheDirectoryOfTheHook)
{
    platform::HookRunner runner;
    run(runner, {u"without a hook nothing happens"_s});
    writeHook("for each; do printf '<%s>' \"$each\"; done >new; mv new written");
    const QStringList hostile{u"match-archived"_s,
                              u"names=$(touch x); `touch x`"_s,
                              u"a=\"'; touch x #"_s,
                              u"b=Jäger & | > x % \\ *"_s,
                              u""_s,
                              u"-x"_s};
    run(runner, hostile);
    EXPECT_TRUE(comes(u"<%1>"_s.arg(hostile.join(u"><"_s)).toUtf8())) << written().constData();
    EXPECT_FALSE(QFile::exists(directory.filePath(u"x"_s)));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(HookRunnerTest, NoPlayersNameGetsOutOfTheExamples)
{
    platform::HookRunner runner;
    const QString hooks = QStringLiteral(QT_TESTCASE_SOURCEDIR "/../packaging/hooks/");
    const QString names = u"names=$(touch x), \"}; touch x #\\, `touch x`, %s"_s;
    writeHook("set -e; '" + hooks.toUtf8() + "history' \"$@\"; mv history.txt written");
    run(runner, {u"match-archived"_s, u"time=1"_s, u"map=M"_s, u"players=4"_s, names});
    EXPECT_TRUE(comes("1\tM\t4\t" + names.toUtf8().mid(6) + '\n')) << written().constData();

    // In the place of curl something that notes the text that it is to send.
    writeHook("PATH=.:$PATH; printf '#!/bin/sh\nprintf %%s \"$8\" >new; mv new written' >curl; "
              "chmod +x curl; exec '" +
              hooks.toUtf8() + "chat' \"$@\"");
    run(runner, {u"ended"_s, names});
    const auto sent = [this] {
        return QJsonDocument::fromJson(written()).object().value(u"content"_s).toString();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return sent() == u"ended "_s + names + u' '; }, 20000))
        << written().constData();
    EXPECT_FALSE(QFile::exists(directory.filePath(u"x"_s)));
}

TEST_F(HookRunnerTest, FourRunAtOnceTheOthersWaitAndABurstIsLimited)
{
    platform::HookRunner runner;
    // Each says that it runs and goes on once the file "go" is there.
    writeHook("echo $1 >>running; until [ -e go ]; do sleep 0.05; done; printf x >>written");
    const int calls = platform::HookRunner::MostAtOnce + platform::HookRunner::MostWaiting;
    for (int call = 0; call <= calls; ++call) {
        run(runner, {QString::number(call)});
    }
    EXPECT_EQ(failures.size(), 1);
    QFile running(directory.filePath(u"running"_s));
    const auto started = [&] {
        return running.open(QIODevice::ReadOnly) ? (running.close(), running.size()) : 0;
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return started() >= 8; }, 20000));
    EXPECT_EQ(started(), 8) << "four lines";
    QFile go(directory.filePath(u"go"_s));
    ASSERT_TRUE(go.open(QIODevice::WriteOnly));
    EXPECT_TRUE(comes(QByteArray(calls, 'x')));
}

TEST_F(HookRunnerTest, OneThatHangsIsEndedWithAllThatItStartedAndOneThatCannotRunIsTold)
{
    platform::HookRunner runner(std::chrono::milliseconds(200));
    writeHook("trap '' TERM; (sleep 1000; :) & echo $! >child; mv child written; wait");
    run(runner, {});
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return !written().isEmpty() && !failures.isEmpty(); }, 20000));
    EXPECT_TRUE(failures.value(0).endsWith(u"/ZebekHook: It did not end in time and was ended"_s));
    const QString child = u"/proc/%1/exe"_s.arg(QString::fromLatin1(written().trimmed()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFileInfo(child).symLinkTarget().isEmpty(); }, 20000))
        << "the child runs on";

    const QDir descriptors(u"/proc/self/fd"_s);
    const auto open = [&] { return descriptors.entryList(QDir::AllEntries | QDir::System).size(); };
    const qsizetype before = open();
    writeHook({}, {});
    constexpr int Calls = 8;
    for (int call = 0; call < Calls; ++call) {
        run(runner, {});
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return failures.size() == 1 + Calls; }, 20000));
    EXPECT_TRUE(failures.last().contains(u"Permission denied"_s)) << failures.last().toStdString();
    EXPECT_TRUE(QTest::qWaitFor([&] { return open() <= before; }, 20000)) << "descriptors leak";
}
