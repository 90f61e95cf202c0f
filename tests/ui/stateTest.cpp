#include "support/ToolTest.h"

class stateTest : public ToolTest
{
protected:
    /// What the footer shows at the next heartbeat, on another tab than last time. The server's own
    /// tab tells its problem itself.
    QString shown()
    {
        auto *const tabs = child<QTabWidget>("tabMain");
        tabs->setCurrentIndex((tabs->currentIndex() + 1) % tabs->count());
        root->MainWindow()->PushUpdate();
        QStringList texts{child<QWidget>("stateDot")->accessibleName()};
        const bool isServersTab = tabs->currentIndex() == frmMain::ServerControl;
        const char *const problem = isServersTab ? "lblProblem" : "lblFooterProblem";
        for (const char *const name : {"lblFooterProcess", "lblFooterNetwork", problem}) {
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
        {[&] { server().uctlServerStatus.setStatus(ServerQueryStatus::Responding); },
         well + running + u"Server Responding|"_s},
        {[&] { pollAs(ServerQueryStatus::Responding); }, well + running + u"Probing Server|"_s},
        {[&] { server().uctlServerStatus.TimerFired(); }, ailing + running + u"Server Dead|"_s},
        {[&] { pollAs(ServerQueryStatus::Dead); },
         ailing + running + u"Probing Server (Seems to be dead)|"_s},
        {[&] { options.AutoRestartGRServer.Let(false); },
         down + running + u"Probing Server (Seems to be dead)|"_s},
        {[&] {
             options.AutoRestartOnProcessStop.Let(false);
             options.FindGRServer.Let(false);
             fake.system.end(1001);
             server().supervise();
         },
         down + none + u"The game server has ended. It ran until 2026-03-14 at 15:09."_s},
        {[&] { server().StopGRServer(); }, unknown + none},
    };
    QSet<QString> states;
    QSet<qint64> icons;
    for (const auto &[step, expected] : steps) {
        step();
        EXPECT_EQ(shown(), expected);
        states.insert(expected.section(u'|', 0, 0));
        icons.insert(root->MainWindow()->windowIcon().cacheKey());
    }
    EXPECT_EQ(icons.size(), states.size()) << "each is made once: Qt keeps copies";
}
