#pragma once

#include "app/Program.h"
#include "app/frmGlobal.h"
#include "core/basMain.h"
#include "core/clsErrors.h"
#include "core/clsOptions.h"
#include "platform/XmlDocument.h"
#include "server/ctlGRServer.h"
#include "support/FakeMachine.h"
#include "support/gameFiles.h"
#include "ui/frmMain.h"

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include <gtest/gtest.h>
#include <memory>

using namespace Qt::Literals::StringLiterals;

/// Gives a test a game directory, a machine of fakes, and the tool in it, not yet started.
class ToolTest : public testing::Test
{
    Q_DISABLE_COPY(ToolTest)

public:
    ~ToolTest() override
    {
        root.reset();
        gRoot = nullptr;
    }

protected:
    ToolTest()
    {
        write(u"GhostRecon.exe"_s, {});
        writeGameFiles(directory.path());
        newTool();
    }

    /// A tool that was never quit, and the next one.
    void newTool()
    {
        root.reset();
        root = std::make_unique<Program>(fake.machine, directory.path());
        gRoot = root.get();
    }
    void writeOptions(const QByteArray &elements) const
    {
        write(OptionsFile, "<options>" + elements + "</options>");
    }
    void startWith(const QByteArray &elements)
    {
        writeOptions(elements);
        newTool();
        root->Start();
    }
    void startIdle() { startWith("<AutoStartGRServer>False</AutoStartGRServer>"); }

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

    /// The last record of the error log on disk, as "Module|Routine|ID|ErrorNo".
    QString lastRecord() const
    {
        const QByteArray log = read(ErrorLog);
        auto record = platform::XmlDocument::parse(
            log.sliced(qMax<qsizetype>(log.lastIndexOf("<Error "), 0)).replace("</Errors>", ""));
        QStringList fields;
        for (const char *name : {"Module", "Routine", "ID", "ErrorNo"}) {
            fields.append(record ? record->root().attribute(name) : QString());
        }
        return fields.join(u'|');
    }
    qsizetype recordCount() const { return read(ErrorLog).count("<Error "); }

    ctlGRServer &server() const { return root->Server(); }
    /// On the selected tab, else wherever it is: names recur on other tabs.
    template <typename Widget>
    Widget *child(const char *name) const
    {
        const QString wanted = QString::fromLatin1(name);
        const QWidget &window = *root->MainWindow();
        const auto *const tabs = window.findChild<QTabWidget *>(u"tabMain"_s);
        auto *const here = tabs->currentWidget()->findChild<Widget *>(wanted);
        return here != nullptr ? here : window.findChild<Widget *>(wanted);
    }

    const QString OptionsFile = u"ZebekSuiteOptions.xml"_s;
    const QString ErrorLog = u"ZEBEK_Error.xml"_s;
    QTemporaryDir directory;
    FakeMachine fake;
    std::unique_ptr<Program> root;
};
