#include "core/basMain.h"
#include "core/clsErrors.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"
#include "platform/XmlDocument.h"
#include "program/GameDirectory.h"

#include <gtest/gtest.h>

/// The other end of the test below: a program that records failures as fast as it can.
void recordForever(const QString &directory)
{
    clsZebek root(platform::nativeMachine(), directory);
    gRoot = &root;
    QDir::setCurrent(directory);
    clsErrors errors;
    for (int number = 0;; ++number) {
        errors.RecordError(u"M"_s, u"R"_s, u"None"_s, number, u"ä"_s);
    }
}

TEST(ErrorLogKill, AProcessKilledWhileItRecordsLeavesALogThatParses)
{
    const QTemporaryDir directory;
    const QString log = directory.filePath(u"ZEBEK_Error.xml"_s);
    qsizetype size = 0;
    for (int round = 1; round <= 40; ++round) {
        QProcess writer;
        writer.start(QCoreApplication::applicationFilePath(),
                     {u"--record-forever"_s, directory.path()});
        ASSERT_TRUE(writer.waitForStarted());
        // Killed at another moment of a record each time.
        ASSERT_TRUE(waitUntil([&] { return QFileInfo(log).size() > size; }, 10000));
        QThread::usleep(370UL * static_cast<unsigned long>(round));
        writer.kill();
        writer.waitForFinished();

        ASSERT_TRUE(platform::XmlDocument::load(log)) << round;
        ASSERT_GE(QFileInfo(log).size(), size) << "a record was lost in round " << round;
        size = QFileInfo(log).size();
    }
    EXPECT_GT(size, 4000);
    EXPECT_LE(QDir(directory.path()).entryList(QDir::Files).size(), 2);
}
