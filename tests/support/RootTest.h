#pragma once

#include "core/basMain.h"
#include "support/FakeMachine.h"
#include "support/FakeRoot.h"
#include "support/gameFiles.h"

#include <QtTest/QtTest>

#include <gtest/gtest.h>
#include <memory>

using namespace Qt::Literals::StringLiterals;

/// Gives a test a game directory, a machine of fakes, and a root object in it, not yet started.
template <typename Root>
class RootTest : public testing::Test
{
    Q_DISABLE_COPY(RootTest)

public:
    ~RootTest() override
    {
        root.reset();
        gRoot = nullptr;
    }

protected:
    RootTest()
    {
        write(u"GhostRecon.exe"_s, {});
        writeGameFiles(directory.path());
        newTool();
    }

    /// A tool that was never quit, and the next one.
    void newTool()
    {
        root.reset();
        root = std::make_unique<Root>(fake.machine, directory.path());
        gRoot = root.get();
    }
    void startWith(const QByteArray &elements)
    {
        write(OptionsFile, "<options>" + elements + "</options>");
        newTool();
        root->Start();
    }
    void startIdle() { startWith("<AutoStartGRServer>False</AutoStartGRServer>"); }

    QString path(const QString &name) const { return directory.filePath(name); }
    QString rootDirectory() const { return directory.path() + QDir::separator(); }
    void write(const QString &name, const QByteArray &content, const QDateTime &time = {}) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.flush();
        ASSERT_TRUE(!time.isValid() || file.setFileTime(time, QFileDevice::FileModificationTime));
    }
    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// The last record of the error log on disk, as "Module|Routine|ID|ErrorNo".
    QString lastRecord() const
    {
        static const QRegularExpression values(
            u".*Module=\"(.*)\" Routine=\"(.*)\" ID=\"(.*)\" ErrorNo=\"(-?\\d+)\""_s,
            QRegularExpression::DotMatchesEverythingOption);
        return values.match(QString::fromUtf8(read(ErrorLog))).capturedTexts().mid(1).join(u'|');
    }
    qsizetype recordCount() const { return read(ErrorLog).count("<Error "); }

    const QString OptionsFile = u"ZebekSuiteOptions.xml"_s;
    const QString ErrorLog = u"ZEBEK_Error.xml"_s;
    QTemporaryDir directory;
    FakeMachine fake;
    std::unique_ptr<Root> root;
};

using ServicesTest = RootTest<FakeRoot>;
