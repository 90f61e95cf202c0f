#pragma once

#include "GameServer.h"
#include "Matches.h"
#include "support/system.h"
#include "web/WebTest.h"

/// The tool, whole, on a machine of fakes, with a game server, an operator and strangers, to whom
/// happens what the steps say. After each bit of time the models look whether all is as it must be;
/// what is not is thrown.
class World : public WebTest
{
private:
    Later m_later{fake.clock};

public:
    GameServer game{path(u"GhostRecon.exe"_s), fake.system, fake.clock, m_later};

    World()
    {
        QDir(directory.path()).mkpath(u"Data/Save/replay"_s);
        startSite("<ReplayCount>8</ReplayCount>");
        m_settings = {settingsOf(*root->Options())};
        lookAtNewTool();
    }
    void wait(int milliseconds)
    {
        const qint64 end = now() + milliseconds;
        while (now() < end) {
            fake.clock.advance(m_later.quiet(std::min<qint64>(Heartbeat, end - now())));
            m_later.happen();
            if (!m_visitors.empty()) {
                settle();
            }
            look();
        }
    }
    /// The program alone is not scheduled.
    void late(int milliseconds)
    {
        if (game.answers()) {
            game.answerAll();
        } else if (milliseconds % 3 == 0) { // it recovers meanwhile, and has lost what it was asked
            game.recover();
            game.forget();
        }
        fake.clock.sleep(milliseconds);
        m_later.happen();
        disturb();
        if (milliseconds % 2 == 0) {
            deliver(); // sockets before timers
        }
    }
    /// The whole machine stands still.
    void suspend(int seconds)
    {
        fake.clock.sleep(Second * seconds);
        m_later.putOff(Second * seconds);
        disturb();
    }
    /// Some servers close on request, others have to be forced. At times the program is late when
    /// one is about to be restarted.
    void hang(int amount)
    {
        game.hang(amount % 2 == 0);
        if (amount % 5 == 0) {
            wait(10 * Second + 30 * amount);
            late(20 * Second + amount);
        }
    }
    void match(int amount)
    {
        while (!m_matches.isOver()) {
            wait(Heartbeat);
        }
        wait(20 * Second); // shorter matches no rule can tell apart
        if (hasTrouble()) {
            m_log.allowFileFailures();
        }
        m_matches.end(amount);
    }
    void refuseStarts(int seconds)
    {
        game.refuseStarts(seconds);
        m_log.allow(CannotStart, 1);
    }
    /// A setting is changed on the desktop.
    void set(int amount)
    {
        const auto [index, value] = changeOf(amount);
        SettingTable[index].let(*root->Options(), value);
        noteSettings();
    }
    void setBySite(int amount)
    {
        m_visitors.clear();
        const auto [index, value] = changeOf(amount);
        const SettingRow &row = SettingTable[index];
        Settings settings = m_settings.back();
        settings[index] = value;
        const QByteArray target = "/UpdateAdmin"_ba + row.form + "Config";
        require(post(target, formOf(row, settings)).contains("uccess"),
                "the web site does not take a form");
        noteSettings();
        require(m_settings.back() == settings, "a form is not stored");
    }
    /// The operator stops or starts the server.
    void command(int stop)
    {
        m_visitors.clear();
        m_supervision.operatorCommands(stop == 0);
        if (game.startsAreRefused()) {
            m_log.allow(CannotStart, 1);
        }
        post("/UpdateAdminServerControlConfig",
             stop == 0 ? "SubmitType=Start+Server" : "SubmitType=Stop+Server");
    }
    /// So many files find no room.
    void fillDisk(int files)
    {
        fake.files.full = files;
        m_log.allowFileFailures();
    }
    /// One of the next file operations fails.
    void lock(int operation)
    {
        fake.files.failAt = fake.files.operations + 1 + operation;
        m_log.allowFileFailures();
    }
    /// The archive's folder is away.
    void moveFolder(int seconds)
    {
        if (!m_folderIsAway) {
            m_folderIsAway = QDir(directory.path()).rename(u"Replays"_s, u"Away"_s);
            m_log.allowFileFailures();
            m_later.in(Second * seconds, [this] { folderComesBack(); });
        }
    }
    /// The tool is killed at one of the next file operations, and started again.
    void kill(int amount)
    {
        if (amount % 2 == 0) {
            set(amount / 2);
        }
        m_log.allowFileFailures();
        fake.files.failAt = -(fake.files.operations + 1 + amount % 14);
        for (const qint64 end = now() + 60 * Second;
             now() < end && fake.files.operations < -fake.files.failAt;) {
            wait(Heartbeat);
        }
        startAgain(amount % 20);
    }
    void restart(int amount)
    {
        fake.files.failAt = fake.files.full = 0;
        if (amount % 2 == 0) {
            set(amount / 2);
        }
        root->Quit();
        m_settings = {m_settings.back()};
        startAgain(amount % 20);
    }
    /// Datagrams that nobody has asked for.
    void sendJunk(int count)
    {
        for (int number = 0; number < count; ++number) {
            game.sendJunk(QByteArray(number * 7 % 1400, static_cast<char>(number)));
        }
        m_supervision.disturb(); // any datagram is a sign of life
        QCoreApplication::processEvents();
    }
    /// Connections that say something foolish, or nothing.
    void visit(int count)
    {
        static const QByteArray Sayings[] = {"",
                                             "\r\n\r\n",
                                             "GET /GETFILE?../options.xml HTTP/1.1\r\n\r\n",
                                             "POST /logon HTTP/1.1\r\n",
                                             "\xff\xfe junk \x01",
                                             "GET / HTTP/1.1\r\nContent-Length: 999999999\r\n\r\n"};
        m_visitors.clear();
        m_log.allow(u"clsWebServerRequest|ParseRequest"_s, std::min(count, 60));
        m_log.allow(u"Error Log|tmrMinute_Timer"_s, 1);
        for (int number = 0; number < count; ++number) {
            m_visitors.push_back(send(Sayings[number % std::size(Sayings)]));
        }
    }
    /// All troubles end, and some time passes in which everything comes right.
    void endWell()
    {
        fake.files.failAt = fake.files.full = 0;
        folderComesBack();
        game.beWell();
        m_visitors.clear();
        for (const SettingRow &row : SettingTable) {
            row.let(*root->Options(), row.values.front());
        }
        noteSettings();
        command(0);
        wait(150 * Second); // in which the last match is done with
        match(2);           // a wanted one
        wait(150 * Second);
        require(server().health() == ServerHealth::Well, "the server is not well at last");
        const QString left = QDirIterator(directory.path(), {u"*.zebek-new"_s},
                                          QDir::Files | QDir::Hidden, QDirIterator::Subdirectories)
                                 .next();
        require(left.isEmpty(), "half a file is left over: ", left);
        lookAtResources(1); // which the server is asked through
        const qsizetype before = heapInUse();
        wait(600 * Second);
        const qsizetype growth = heapInUse() - before;
        require(growth < 4096, "memory grows with time: ", QString::number(growth));
    }
    qint64 now() const { return fake.clock.milliseconds(); }

private:
    static constexpr int Heartbeat = 500;
    static constexpr int Second = 1000;
    const QString CannotStart = u"Process Class|Create"_s;

    void TestBody() override {}

    /// Bounds begin anew.
    void disturb()
    {
        m_supervision.disturb();
        m_archive.disturb();
        m_log.disturb();
        m_settled = now();
    }
    void noteSettings()
    {
        const Settings settings = settingsOf(*root->Options());
        if (settings != m_settings.back()) {
            m_settings.push_back(settings);
            m_settled = now();
            look();
        }
    }
    void folderComesBack()
    {
        if (std::exchange(m_folderIsAway, false)) {
            QDir(directory.path()).rename(u"Away"_s, u"Replays"_s);
        }
    }
    bool hasTrouble() const
    {
        return fake.files.failAt != 0 || fake.files.full > 0 || m_folderIsAway;
    }
    void startAgain(int seconds)
    {
        m_visitors.clear();
        root.reset();
        gRoot = nullptr;
        fake.files.failAt = 0;
        require(fake.system.handles.empty(), "a handle is left open");
        fake.clock.sleep(Second * seconds);
        if (game.startsAreRefused()) {
            m_log.allow(CannotStart, 1);
        }
        folderComesBack(); // or the tool makes another one
        newTool();
        root->Start();
        lookAtNewTool();
    }
    void lookAtNewTool()
    {
        root->MainWindow()->hide();
        const Settings settings = settingsOf(*root->Options());
        require(std::ranges::find(m_settings, settings) != m_settings.end(), "a setting is lost");
        m_settings = {settings};
        m_supervision.toolStarted(settings[AutoStart] != 0);
        disturb();
        look();
        lookAtResources(0);
    }
    /// As many as after the first start, and the sockets opened since.
    void lookAtResources(int sockets)
    {
        const std::size_t open = fake.clock.alarms() + QDir(u"/proc/self/fd"_s).count() - sockets;
        m_open = m_open == 0 ? open : m_open;
        require(open == m_open, "timers or descriptors are left: ", QString::number(open - m_open));
    }
    void deliver()
    {
        if (game.answers() && game.answerAll()) {
            for (int round = 0;
                 round < 100 && server().StatusObject().Status() == ServerQueryStatus::Probing;
                 ++round) {
                QCoreApplication::processEvents();
            }
        }
    }
    void look()
    {
        const bool hadTrouble = std::exchange(m_hadTrouble, hasTrouble());
        const bool trouble = m_hadTrouble || hadTrouble;
        require(fake.boxes.boxes.isEmpty(), "a box: ", fake.boxes.boxes.value(0));
        const bool recordsWait = root->Errors()->count() > m_log.records();
        lookAtServer(!trouble && !recordsWait);
        lookAtFiles(trouble);
        m_log.pass(now(), !trouble && !recordsWait);
        if (trouble) {
            m_settled = now();
        } else if (now() - m_settled > 4 * Second) {
            m_settings = {m_settings.back()};
        }
        if (fake.files.failAt > 0 && fake.files.operations >= fake.files.failAt) {
            fake.files.failAt = 0;
        }
    }
    void lookAtServer(bool canBeTold)
    {
        Sight sight{.now = now(), .settings = m_settings.back(), .told = m_log.told(CannotStart)};
        game.look(sight);
        if (sight.running == 0) {
            game.forget();
            m_log.allow(u"GR Server Class|Supervise"_s, 1, 1); // that it ends again and again
        }
        deliver();
        sight.refused = sight.refused && canBeTold;
        sight.held = server().Connected() ? server().Process()->PID() : 0;
        sight.well = server().health() == ServerHealth::Well;
        m_supervision.look(sight);
        require(fake.system.handles.size() <= 1, "two handles are open");
        require(fake.system.wrongCloses == 0, "a handle is closed twice");
        fake.hooks.events.clear();
    }
    void lookAtFiles(bool trouble)
    {
        if (std::exchange(m_operations, fake.files.operations) != fake.files.operations) {
            m_log.look(read(ErrorLog), now());
            if (!m_folderIsAway) {
                Archive::Folder folder;
                const QDir replays(path(u"Replays"_s));
                for (const QString &name : replays.entryList({u"*.rpf"_s}, QDir::Files)) {
                    folder[name] = platform::readFile(replays.filePath(name));
                }
                m_archive.lookAt(folder, m_settings.back(), trouble);
            }
        }
        m_archive.look(now(), m_settings.back(), trouble);
    }

    Supervision m_supervision;
    Archive m_archive;
    Log m_log;
    Matches m_matches{fake.clock, m_later, m_archive, m_log,
                      [this](const QString &name, const QByteArray &content) {
                          write(name, content, fake.clock.now());
                      }};
    /// What the settings file may hold; the last is what it is to hold.
    std::vector<Settings> m_settings;
    qint64 m_settled = 0;   ///< since when it may hold that alone
    std::size_t m_open = 0; ///< timers and descriptors, after the first start
    bool m_folderIsAway = false;
    bool m_hadTrouble = false;
    int m_operations = -1;
    std::vector<std::unique_ptr<QTcpSocket>> m_visitors;
};
