#pragma once

#include "core/basMain.h"
#include "core/clsErrors.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "core/frmGlobal.h"
#include "platform/XmlDocument.h"
#include "server/ctlGRServer.h"
#include "support/FakeMachine.h"
#include "ui/frmMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>

/// Gives a test a game directory, a machine of fakes, and the tool in it, not yet started.
class ToolTest : public testing::Test
{
public:
    ToolTest(const ToolTest &) = delete;
    ToolTest &operator=(const ToolTest &) = delete;
    ~ToolTest() override
    {
        root.reset();
        gRoot = nullptr;
    }

protected:
    ToolTest()
    {
        write(QStringLiteral("GhostRecon.exe"), {});
        newTool();
    }

    /// A tool that was never quit, and the next one.
    void newTool()
    {
        root.reset();
        root = std::make_unique<clsZebek>(fake.machine, directory.path());
        gRoot = root.get();
    }

    QString path(const QString &name) const { return directory.filePath(name); }
    QString rootDirectory() const { return directory.path() + QDir::separator(); }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// Writes an options file with the given elements.
    void writeOptions(const QByteArray &elements) const
    {
        write(QStringLiteral("ZebekSuiteOptions.xml"), "<options>" + elements + "</options>");
    }

    struct Record
    {
        QString module;
        QString routine;
        QString id;
        int number;
        QString description;
    };
    /// The last record of the error log on disk.
    Record lastRecord() const
    {
        const QByteArray log = read(QStringLiteral("ZEBEK_Error.xml"));
        const qsizetype start = log.lastIndexOf("<Error ");
        auto document = platform::XmlDocument::parse(
            log.sliced(qMax<qsizetype>(start, 0)).replace("</Errors>", ""));
        if (!document) {
            return {};
        }
        const platform::XmlElement record = document->root();
        return {record.attribute("Module"), record.attribute("Routine"), record.attribute("ID"),
                record.attribute("ErrorNo").toInt(), record.text()};
    }
    int recordCount() const
    {
        return static_cast<int>(read(QStringLiteral("ZEBEK_Error.xml")).count("<Error "));
    }

    ctlGRServer &server() const { return *root->GlobalForm()->uctlGRServer; }

    QTemporaryDir directory;
    FakeMachine fake;
    std::unique_ptr<clsZebek> root;
};
