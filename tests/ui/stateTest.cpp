#include "support/ToolTest.h"
#include "ui/StateIcon.h"

class stateTest : public ToolTest
{
protected:
    QWidget &dot() const { return *child<QWidget>("stateDot"); }
    QIcon icon() const { return root->MainWindow()->windowIcon(); }
    /// What the footer shows at the next heartbeat, on another tab than last time.
    QString shown()
    {
        auto *const tabs = child<QTabWidget>("tabMain");
        tabs->setCurrentIndex((tabs->currentIndex() + 1) % tabs->count());
        root->MainWindow()->PushUpdate();
        QStringList texts{dot().accessibleName()};
        for (const char *name : {"lblFooterProcess", "lblFooterNetwork", "lblFooterProblem"}) {
            const auto *const label = child<QLabel>(name);
            texts += label->isVisible() ? label->text() : QString();
        }
        return texts.join(u'|');
    }
    void pollAs(ServerQueryStatus status)
    {
        server().uctlServerStatus.setStatus(status);
        server().tmrPollingFrequency_Timer();
    }
};

TEST_F(stateTest, TheFooterAndTheIconTellTheServersStateOnEveryTab)
{
    startIdle();
    clsOptions &options = *root->Options();
    const QString running = u"|GR Process created (ID=1001) :Running|Network Status: "_s;
    const QString none = u"|No Process information|Network Status: Not Monitoring|"_s;
    const QString unknown = u"Nothing is known of the game server"_s;
    const QString well = u"The game server is well"_s;
    const QString ailing = u"The game server is in trouble and will be restarted"_s;
    const QString down = u"The game server is down and will not be restarted"_s;
    const std::pair<std::function<void()>, QString> steps[] = {
        {[] {}, unknown + none},
        {[&] {
             fake.system.startFails = true;
             server().StartGRServer(true);
         },
         down + none + u"The game server could not be started. No such file or directory"_s},
        {[&] {
             fake.system.startFails = false;
             server().StartGRServer(true);
             server().tmrStartupTimeout_Timer();
         },
         unknown + running + u"Unknown|"_s},
        {[&] { pollAs(ServerQueryStatus::Unknown); }, unknown + running + u"Probing Server|"_s},
        {[&] { server().uctlServerStatus.setStatus(ServerQueryStatus::Responding); },
         well + running + u"Server Responding|"_s},
        {[&] { pollAs(ServerQueryStatus::Responding); }, well + running + u"Probing Server|"_s},
        {[&] { server().uctlServerStatus.TimerFired(); }, ailing + running + u"Server Dead|"_s},
        {[&] { pollAs(ServerQueryStatus::Dead); },
         ailing + running + u"Probing Server (Seems to be dead)|"_s},
        {[&] { options.ServerTimeout.Let(0); },
         down + running + u"Probing Server (Seems to be dead)|"_s},
        {[&] {
             options.ServerTimeout.Let(30);
             options.AutoRestartGRServer.Let(false);
         },
         down + running + u"Probing Server (Seems to be dead)|"_s},
        {[&] { server().uctlServerStatus.setStatus(ServerQueryStatus::Responding); },
         well + running + u"Server Responding|"_s},
        {[&] {
             options.AutoRestartOnProcessStop.Let(false);
             options.FindGRServer.Let(false);
             fake.system.end(1001);
             server().supervise();
         },
         down + none + u"The game server has ended. It ran until 2026-03-14 at 15:09."_s},
        {[&] { server().StopGRServer(); }, unknown + none},
    };
    std::map<QString, qint64> icons;
    QString last = shown();
    for (const auto &[step, expected] : steps) {
        const QImage before = icon().pixmap(48).toImage();
        const QImage dotBefore = dot().grab().toImage();
        step();
        EXPECT_EQ(shown(), expected);
        const bool differs = expected.section(u'|', 0, 0) != last.section(u'|', 0, 0);
        EXPECT_EQ(icon().pixmap(48).toImage() != before, differs);
        EXPECT_EQ(dot().grab().toImage() != dotBefore, differs);
        const auto made = icons.try_emplace(expected.section(u'|', 0, 0), icon().cacheKey()).first;
        root->MainWindow()->PushUpdate();
        EXPECT_EQ(icon().cacheKey(), made->second) << "made once: Qt keeps copies of each";
        last = expected;
    }
}

TEST_F(stateTest, TheSignsDifferWithoutTheirColoursToo)
{
    QList<QImage> signs;
    for (const auto health :
         {ServerHealth::Unknown, ServerHealth::Well, ServerHealth::Ailing, ServerHealth::Down}) {
        QImage picture(64, 64, QImage::Format_RGB32);
        picture.fill(Qt::black);
        QPainter painter(&picture);
        stateIcon::paint(painter, picture.rect(), health);
        const QImage white = picture.createMaskFromColor(qRgb(255, 255, 255));
        EXPECT_FALSE(signs.contains(white));
        signs.append(white);
    }
}

TEST_F(stateTest, ARestartIsToldWithItsReasonAndTime)
{
    root->Start();
    const auto toolTip = [this] {
        shown();
        return dot().parentWidget()->toolTip().section(u'\n', 1, 1);
    };
    fake.system.end(server().Process()->PID());
    fake.clock.advance(3000);
    EXPECT_EQ(toolTip(), u"The game server had ended and was restarted. 2026-03-14 15:09"_s);
    fake.clock.advance(60000);
    pollAs(ServerQueryStatus::Dead);
    server().uctlServerStatus.setStatus(ServerQueryStatus::Dead);
    server().tmrDead_Timer();
    EXPECT_EQ(toolTip(), u"The game server did not answer and was restarted. 2026-03-14 15:10"_s);
    server().StopGRServer();
    server().StartGRServer(true);
    EXPECT_TRUE(toolTip().endsWith(u"15:10"_s)) << "by hand";
}

#ifndef Q_OS_WIN // where a program is started
/// What the desktop's program was asked to show, where `act` lets it be asked.
static QString opened(const std::function<void()> &act)
{
    QTextBrowser viewer;
    QDesktopServices::setUrlHandler(u"file"_s, &viewer, "setSource");
    act();
    QDesktopServices::unsetUrlHandler(u"file"_s);
    return viewer.source().toLocalFile();
}

TEST_F(stateTest, TheManualIsOpenedByKeyAndLinkOrSaidToBeMissing)
{
    startIdle();
    ASSERT_TRUE(QTest::qWaitForWindowActive(root->MainWindow()));
    const auto pressF1 = [this] { QTest::keyClick(root->MainWindow(), Qt::Key_F1); };
    EXPECT_EQ(opened(pressF1), QString());
    EXPECT_TRUE(fake.boxes.boxes.value(0).contains(path(u"ZebekManual"_s)));
    QDir(directory.path()).mkdir(u"ZebekManual"_s);
    write(u"ZebekManual/index.html"_s, {});
    EXPECT_EQ(opened(pressF1), path(u"ZebekManual/index.html"_s));
    EXPECT_EQ(opened([this] { child<QAbstractButton>("lblManual")->click(); }),
              path(u"ZebekManual/index.html"_s));
}
#endif

TEST_F(stateTest, TheErrorsOfTheLogAreCountedAndALinkOpensIt)
{
    write(ErrorLog, "<Errors><Error/></Errors>");
    startIdle();
    auto *const link = child<QWidget>("lblErrors");
    EXPECT_EQ(link->accessibleName(), u"1 error logged"_s);
    root->Errors()->RecordError(u"M"_s, u"R"_s, {}, 5, u"x"_s);
    shown();
    EXPECT_EQ(link->accessibleName(), u"2 errors logged"_s);
    EXPECT_FALSE(link->geometry().intersects(dot().geometry()));
#ifndef Q_OS_WIN
    const auto click = [&] {
        QTest::mouseClick(link, Qt::LeftButton, {}, {9, link->height() / 2});
    };
    EXPECT_EQ(opened(click), path(ErrorLog));
#endif
    QFile::remove(path(ErrorLog));
    shown();
    EXPECT_FALSE(link->isVisible());
}
