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
    const QString NoNumber = u"Zebek Suite|0|Enter a number please"_s;
    const QString NoPort = u"Zebek Suite|0|Please enter a value between 0 and 65535)"_s;
    const QString Later =
        u"Zebek Suite|0|Changes will not take effect until web server is restarted"_s;
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
        auto *const label = child<QLabel>(("lbl" + name).constData());
        QTest::mouseRelease(label, Qt::LeftButton, {}, {9, 9}); // of what was pressed elsewhere
        QTest::mouseClick(label, Qt::LeftButton, {}, {9, 9});
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

TEST_F(optionPanelsTest, TheAutostartEntryChangesOnAClickOnlyAndIsShownAsItIs)
{
    auto *const autostart = child<QCheckBox>("chkAutoRunonStartup");
    fake.autostart.entry = u"by another hand"_s;
    show(System);
    EXPECT_TRUE(autostart->isChecked());
    EXPECT_EQ(fake.autostart.entry, u"by another hand"_s);
    QTest::keyClick(autostart, Qt::Key_Space);
    EXPECT_FALSE(fake.autostart.entry);
    EXPECT_TRUE(child<QLabel>("lblAutoRunonStartup")->toolTip().endsWith(u"Nowhere yet."_s));
    EXPECT_TRUE(pagesAreFresh());
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
    EXPECT_EQ(options().RemoteAccessIP(), u"127.0.0.1"_s) << "stored when the window is loaded";
    EXPECT_EQ(type("txtIP", u"192.168.1.300"_s), u"192.168.1.300"_s);
    EXPECT_EQ(options().RemoteAccessIP(), u"192.168.1.30"_s);
    show(System);
    EXPECT_EQ(options().RemoteAccessIP(), u"127.0.0.1"_s);
}

TEST_F(optionPanelsTest, ThePortIsCheckedAndTheButtonStartsAndStopsTheWebServer)
{
    show(System);
    EXPECT_EQ(type("txtPort", u"0"_s), u"0"_s);
    EXPECT_EQ(type("txtPort", u"65535"_s), u"65535"_s);
    EXPECT_EQ(type("txtPort", u"65536"_s), u"6553"_s);
    EXPECT_EQ(type("txtPort", {}), u"6553"_s);
    EXPECT_TRUE(pagesAreFresh());
    EXPECT_EQ(takeBoxes(), (QStringList{NoPort, NoNumber}));
    type("txtUserName", u"me"_s);
    type("txtPassword", u"secret"_s);
    EXPECT_EQ(clickWebServer(), u"Web server is currently running"_s);
    QTcpSocket visitor;
    visitor.connectToHost(QHostAddress::LocalHost, 6553);
    EXPECT_TRUE(visitor.waitForConnected());
    type("txtPort", u"81"_s);
    EXPECT_EQ(takeBoxes(), QStringList(2, Later));
    EXPECT_EQ(options().RemoteAccessPort(), 81);
    // Until the heartbeat letters the button anew, it does the same again.
    QTest::mouseClick(child<QPushButton>("cmdWebServer"), Qt::LeftButton);
    EXPECT_EQ(clickWebServer(), u"Web server is currently stopped"_s);
    EXPECT_FALSE(root->GlobalForm()->webServer.wsckNewConnections.isListening());
    show(ReplayOptions);
    EXPECT_EQ(type("txtReplayCount", u"00"_s), u"0"_s);
}

TEST_F(optionPanelsTest, WhyTheWebServerDidNotStartStandsBesideItsState)
{
    show(System);
    const auto *const problem = child<QLabel>("lblProblem");
    EXPECT_EQ(clickWebServer(), u"Web server is currently stopped"_s);
    EXPECT_TRUE(problem->isVisible() && problem->text().contains(u"user name and a password"_s));
    type("txtUserName", u"me"_s);
    type("txtPassword", u"secret"_s);
    fake.clock.advance(500);
    EXPECT_FALSE(problem->isVisible());

    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::Any, 8080));
    type("txtPort", u"8080"_s);
    EXPECT_EQ(clickWebServer(), u"Web server is currently stopped"_s);
    EXPECT_TRUE(problem->text().startsWith(u"Another program has the port 8080"_s));
    other.close();
    fake.clock.advance(3000);
    EXPECT_EQ(child<QLabel>("lblStatus")->text(), u"Web server is currently running"_s);
    EXPECT_FALSE(problem->isVisible());
}
