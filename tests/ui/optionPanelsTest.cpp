#include "support/ToolTest.h"
#include "web/Listener.h"
#include "web/clsWebSite.h"

#include <QTcpServer>
#include <QTcpSocket>

class optionPanelsTest : public ToolTest
{
protected:
    using enum frmMain::Tab;
    optionPanelsTest() { startIdle(); }

    template <typename Type>
    using Row = std::tuple<frmMain::Tab, QByteArray, Setting<Type> clsOptions::*>;

    clsOptions &options() const { return *root->Options(); }
    void show(frmMain::Tab tab) const { child<QTabWidget>("tabMain")->setCurrentIndex(tab); }
    /// Types in place of what the box holds; returns what it holds then.
    QString type(const char *name, const QString &text) const
    {
        auto *const box = child<QLineEdit>(name);
        box->selectAll();
        text.isEmpty() ? QTest::keyClick(box, Qt::Key_Delete) : QTest::keyClicks(box, text);
        return box->text();
    }
    /// Clicks the start and stop button and returns what the next heartbeat shows.
    QString clickWebServer()
    {
        QTest::mouseClick(child<QPushButton>("cmdWebServer"), Qt::LeftButton);
        fake.clock.advance(500);
        return child<QLabel>("lblStatus")->text();
    }
    /// Whether each page of the site is what rendering it anew makes it.
    bool pagesAreFresh() const
    {
        QByteArray texts[2];
        for (QByteArray &text : texts) {
            for (const auto &entry : root->WebSite()->Pages()) {
                text += entry.page->HTML({});
            }
            root->WebSite()->RefreshAllPages();
        }
        return texts[0] == texts[1];
    }
    QStringList takeBoxes() { return std::exchange(fake.boxes.boxes, {}); }
};

TEST_F(optionPanelsTest, CheckBoxesAndTheirLabelsWriteOnAClickAndShowWhatIsStored)
{
    const Row<bool> rows[] = {
        {System, "FindGRServer", &clsOptions::FindGRServer},
        {System, "AllowRemoteAccess", &clsOptions::AllowRemoteAccess},
        {ReplayOptions, "RecordReplays", &clsOptions::RecordReplays},
        {ReplayOptions, "SkipBlankReplays", &clsOptions::SkipBlankReplays},
        {ServerControl, "AutoStartGRServer", &clsOptions::AutoStartGRServer},
        {ServerControl, "AutoRestartGRServer", &clsOptions::AutoRestartGRServer},
        {ServerControl, "AutoRestartOnProcessStop", &clsOptions::AutoRestartOnProcessStop}};
    for (const auto &[tab, name, setting] : rows) {
        SCOPED_TRACE(name.constData());
        show(tab);
        const bool before = (options().*setting)();
        QTest::mouseClick(child<QLabel>(("lbl" + name).constData()), Qt::LeftButton, {}, {9, 9});
        EXPECT_EQ((options().*setting)(), !before);
        EXPECT_TRUE(pagesAreFresh());
        auto *const box = child<QCheckBox>(("chk" + name).constData());
        QTest::keyClick(box, Qt::Key_Space);
        EXPECT_EQ((options().*setting)(), before);
        (options().*setting).Let(!before);
        root->MainWindow()->FillFields();
        EXPECT_EQ(box->isChecked(), !before);
    }
}

TEST_F(optionPanelsTest, TextsAreStoredAndOnlyAWholeAddressIs)
{
    const Row<QString> rows[] = {
        {System, "txtUserName", &clsOptions::AdminUserName},
        {System, "txtPassword", &clsOptions::AdminPassword},
        {ServerControl, "txtServerCommandLineArgs", &clsOptions::ServerCommandLineArgs},
        {StatusReporting, "txtServerRunningGif", &clsOptions::ServerRunningGif},
        {StatusReporting, "txtServerCrashGif", &clsOptions::ServerCrashGif}};
    for (const auto &[tab, name, setting] : rows) {
        SCOPED_TRACE(name.constData());
        show(tab);
        (options().*setting).Ex(QString(40000, u'x')); // more than a box holds by itself
        root->MainWindow()->FillFields();
        EXPECT_EQ((options().*setting)().size(), 40000);
        const auto text = QString::fromLatin1(name + '+');
        EXPECT_EQ(type(name.constData(), text), text);
        EXPECT_EQ((options().*setting)(), text);
        EXPECT_TRUE(pagesAreFresh());
    }
    show(System);
    EXPECT_EQ(type("txtIP", u"192.168.1.300"_s), u"192.168.1.300"_s);
    EXPECT_EQ(options().RemoteAccessIP(), u"192.168.1.30"_s);
}

TEST_F(optionPanelsTest, EveryKeystrokeStoresANumberOrIsTakenBack)
{
    const std::pair<Row<std::int32_t>, int> rows[] = {
        {{System, "txtPort", &clsOptions::RemoteAccessPort}, 65535},
        {{ServerControl, "txtPollingFreq", &clsOptions::ServerPollingFrequency}, 32767},
        {{ServerControl, "txtServerStartupTimeout", &clsOptions::ServerStartupTimeout}, 64},
        {{ServerControl, "txtServerTimeout", &clsOptions::ServerTimeout}, 64},
        {{ReplayOptions, "txtReplayCount", &clsOptions::ReplayCount}, 32767}};
    for (const auto &[row, largest] : rows) {
        const auto &[tab, name, setting] = row;
        SCOPED_TRACE(name.constData());
        const QString wrong =
            u"Zebek Suite|0|Please enter a value between 0 and %1)"_s.arg(largest);
        show(tab);
        type(name.constData(), QString::number(largest));
        EXPECT_EQ((options().*setting)(), largest);
        EXPECT_TRUE(pagesAreFresh());
        EXPECT_EQ(takeBoxes(), QStringList());

        const QString kept = QString::number(largest / 10);
        EXPECT_EQ(type(name.constData(), QString::number(largest + 1)), kept);
        for (const QString &refused : {u""_s, u"-1"_s, u"1e10"_s}) {
            child<QLineEdit>(name.constData())->setText(refused);
            EXPECT_EQ(child<QLineEdit>(name.constData())->text(), kept);
        }
        EXPECT_EQ((options().*setting)(), largest / 10);
        EXPECT_EQ(takeBoxes(),
                  (QStringList{wrong, u"Zebek Suite|0|Enter a number please"_s, wrong, wrong}));

        (options().*setting).Let(70000); // which somebody has written into the file
        root->MainWindow()->FillFields();
        EXPECT_EQ(takeBoxes(), QStringList()) << "not before the panel is filled";
        QApplication::processEvents();
        EXPECT_EQ(takeBoxes(), QStringList(wrong)) << "once";
        EXPECT_EQ((options().*setting)(), 70000);
        type(name.constData(), u"7"_s);
        takeBoxes();
    }
}

TEST_F(optionPanelsTest, TheButtonStartsAndStopsTheWebServerAndWhatHindersItStandsBeside)
{
    show(System);
    const auto *const problem = child<QLabel>("lblProblem");
    const QString running = u"Web server is currently running"_s;
    const QString stopped = u"Web server is currently stopped"_s;
    EXPECT_EQ(clickWebServer(), stopped);
    EXPECT_TRUE(problem->isVisible() && problem->text().contains(u"user name and a password"_s));
    type("txtUserName", u"me"_s);
    type("txtPassword", u"secret"_s);
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::Any, 8080));
    type("txtPort", u"8080"_s);
    EXPECT_EQ(clickWebServer(), stopped);
    EXPECT_TRUE(problem->text().startsWith(u"Another program has the port 8080"_s));
    other.close();
    fake.clock.advance(3000);
    EXPECT_EQ(child<QLabel>("lblStatus")->text(), running);
    EXPECT_FALSE(problem->isVisible());
    QTcpSocket visitor;
    visitor.connectToHost(QHostAddress::LocalHost, 8080);
    EXPECT_TRUE(visitor.waitForConnected());

    type("txtPort", u"81"_s);
    EXPECT_EQ(takeBoxes(),
              QStringList(2, u"Zebek Suite|0|Changes will not take effect until web server is "
                             "restarted"_s));
    EXPECT_EQ(options().RemoteAccessPort(), 81);
    EXPECT_EQ(clickWebServer(), stopped);
    EXPECT_FALSE(root->GlobalForm()->webServer.wsckNewConnections.isListening());
}
