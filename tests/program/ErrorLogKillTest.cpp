#include "core/basMain.h"
#include "core/clsErrors.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"
#include "platform/XmlDocument.h"
#include "program/GameDirectory.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

/// The other end of the test below: a program that records failures as fast as it can.
void recordForever(const QString &directory)
{
    clsZebek root(platform::nativeMachine(), directory);
    gRoot = &root;
    QDir::setCurrent(directory);
    clsErrors errors;
    for (int number = 0;; ++number) {
        errors.RecordError(QStringLiteral("M"), QStringLiteral("R"), QStringLiteral("None"), number,
                           QStringLiteral("ä"));
    }
}

TEST(ErrorLogKill, AProcessKilledWhileItRecordsLeavesALogThatParses)
{
    const QTemporaryDir directory;
    const QString log = directory.filePath(QStringLiteral("ZEBEK_Error.xml"));
    qsizetype size = 0;
    for (int round = 1; round <= 40; ++round) {
        QProcess writer;
        writer.start(QCoreApplication::applicationFilePath(),
                     {QStringLiteral("--record-forever"), directory.path()});
        ASSERT_TRUE(writer.waitForStarted());
        // Killed at another moment of a record each time.
        ASSERT_TRUE(waitUntil([&] { return QFileInfo(log).size() > size; }, 10000));
        QThread::usleep(370UL * static_cast<unsigned long>(round));
        writer.kill();
        writer.waitForFinished();

        auto document = platform::XmlDocument::load(log);
        ASSERT_TRUE(document) << round;
        QFile file(log);
        ASSERT_GE(file.size(), size) << "a record was lost in round " << round;
        size = file.size();
    }
    EXPECT_GT(size, 4000);
    EXPECT_LE(QDir(directory.path()).entryList(QDir::Files).size(), 2);
}
