#pragma once

#include "core/basMain.h"
#include "core/clsErrors.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "support/FakeMachine.h"
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

/// A root object with the services that everybody uses; what lies above them is not there.
class FakeRoot : public clsZebek
{
public:
    FakeRoot(const platform::Machine &machine, const QString &directory)
        : m_machine(machine), m_rootDirectory(directory + QDir::separator())
    {
    }

    void Start()
    {
        m_errors = std::make_unique<clsErrors>();
        m_options = std::make_unique<clsOptions>();
    }
    void Quit() override { m_options->Save(); }

    clsErrors *Errors() const override { return m_errors.get(); }
    clsOptions *Options() const override { return m_options.get(); }
    clsReplays *Replays() const override { return nullptr; }
    const QString &RootDirectory() const override { return m_rootDirectory; }
    clsWebSite *WebSite() const override { return nullptr; }
    const platform::Machine &Machine() const override { return m_machine; }
    ctlGRServer &Server() const override { std::abort(); }
    iGlobalForm *GlobalForm() const override { return nullptr; }
    iMainWindow *MainWindow() const override { return nullptr; }
    void RefreshPages(std::optional<PageKey> /*page*/) const override {}

private:
    const platform::Machine &m_machine;
    QString m_rootDirectory;
    std::unique_ptr<clsErrors> m_errors;
    std::unique_ptr<clsOptions> m_options;
};

using ServicesTest = RootTest<FakeRoot>;
