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
public:
    GameServer game{path(u"GhostRecon.exe"_s), fake.system, fake.clock};

    World()
    {
        QDir(directory.path()).mkpath(u"Data/Save/replay"_s);
        startSite("<ReplayCount>8</ReplayCount>");
        m_settings = {settingsOf(*root->Options())};
        lookAtNewTool();
    }
    void wait(qint64 milliseconds)
    {
        constexpr qint64 Long = 900 * Second; // longer than any trouble
        const qint64 end = now() + milliseconds;
        while (now() < end) {
            fake.clock.advance(std::min(Heartbeat, end - now()));
            if (!m_visitors.empty()) {
                settle();
            }
            look();
        }
        if (milliseconds > Long && !hasTrouble() && !recordsWait()) {
            m_log.forgetCauses();
        }
    }
    /// The program alone is not scheduled.
    void late(qint64 milliseconds)
    {
        if (game.answers()) {
            game.take(true);
        } else if (milliseconds % 3 == 0) { // it recovers meanwhile, and has lost what it was asked
            game.mood.hangs = false;
            game.take(false);
        }
        fake.clock.sleep(milliseconds);
        m_matches.happen();
        disturb();
        if (milliseconds % 2 == 0) {
            deliver(); // sockets before timers
        }
    }
    /// The whole machine stands still, but not twice in a short time: of two late looks in a row at
    /// a match's page the tool leaves out the first only.
    void suspend(int seconds)
    {
        if (now() - m_settled > 90 * Second) {
            fake.clock.sleep(Second * seconds);
            disturb();
        }
    }
    /// Some servers close on request, others have to be forced. At times the program is late when
    /// one is about to be restarted.
    void hang(qint64 amount)
    {
        game.hang(amount % 2 == 0);
        if (amount % 5 == 0) {
            wait(10 * Second + 30 * amount);
            late(20 * Second + amount);
        }
    }
    /// At times the one before has only just ended.
    void match(int amount)
    {
        while (!m_matches.isOver()) {
            wait(Heartbeat);
        }
        wait((amount % 3 == 0 ? 5 : 60) * Second);
        if (hasTrouble()) {
            m_log.allowFileFailures();
        }
        m_matches.end(amount);
    }
    /// At times the server ends, and the tool cannot even write that down at once.
    void refuseStarts(int seconds)
    {
        game.mood.refusesStarts = in(seconds);
        m_log.allow(CannotStart, 1);
        if (seconds % 3 == 0) {
            game.end();
            lock(0);
        }
    }
    /// The operator changes a setting, in the window or on the web site.
    void set(int amount)
    {
        const std::size_t index = amount % SettingCount;
        const std::vector<int> &values = SettingTable[index].values;
        set(index, values[amount / SettingCount % values.size()], amount / SettingCount % 7 < 2);
    }
    /// The operator stops or starts the server.
    void command(int stop)
    {
        m_supervision.operatorCommands(stop == 0);
        m_log.allow(CannotStart, 1);
        m_visitors.clear();
        post("/UpdateAdminServerControlConfig",
             stop == 0 ? "SubmitType=Start+Server" : "SubmitType=Stop+Server");
    }
    /// So many files find no room, nor does a replay in place of one that is smaller.
    void fillDisk(int files)
    {
        fake.files.full = files;
        fake.files.space = 0;
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
        if (!m_folderComesBack && QDir(directory.path()).rename(u"Replays"_s, u"Away"_s)) {
            m_folderComesBack = in(seconds);
            m_log.allowFileFailures();
        }
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
    /// The tool is quit, or killed at one of the next file operations, and started again.
    void endTool(int amount)
    {
        if (amount % 2 == 0) {
            set(amount / 2);
        }
        if (amount % 3 == 0) {
            fake.files.failAt = fake.files.full = 0;
            root->Quit();
            m_settings = {m_settings.back()};
        } else {
            m_log.allowFileFailures();
            fake.files.failAt = -(fake.files.operations + 1 + amount / 3 % 14);
            const qint64 end = in(60);
            while (now() < end && fake.files.operations < -fake.files.failAt) {
                wait(Heartbeat);
            }
        }
        m_visitors.clear();
        root.reset();
        require(fake.system.handles.empty(), "a handle is left open");
        fake.files.failAt = 0;
        fake.clock.sleep(Second * (amount % 20));
        m_log.allow(CannotStart, 1);
        bringFolderBack(); // or the tool makes another one
        newTool();
        root->Start();
        lookAtNewTool();
    }
    /// All troubles end, and some time passes in which everything comes right.
    void endWell()
    {
        fake.files.failAt = fake.files.full = 0;
        fake.files.space = std::numeric_limits<qint32>::max();
        bringFolderBack();
        m_visitors.clear();
        game.mood = {};
        for (std::size_t index = 0; index < SettingCount; ++index) {
            set(index, SettingTable[index].values.front());
        }
        command(0);
        wait(150 * Second); // in which the last match is done with
        match(2);           // a wanted one
        wait(150 * Second);
        require(server().health() == ServerHealth::Well, "the server is not well at last");
        const QString left = QDirIterator(directory.path(), {u"*.zebek-new"_s},
                                          QDir::Files | QDir::Hidden, QDirIterator::Subdirectories)
                                 .next();
        require(left.isEmpty(), "half a file is left over: ", left);
        const qsizetype before = heapInUse();
        wait(600 * Second);
        const qsizetype growth = heapInUse() - before;
        require(growth < 4096, "memory grows with time: ", QString::number(growth));
        endTool(3);
    }
    qint64 now() const { return fake.clock.milliseconds(); }
    qint64 in(int seconds) const { return now() + Second * seconds; }

private:
    static constexpr qint64 Heartbeat = 500;
    static constexpr qint64 Second = 1000;
    const QString CannotStart = u"Process Class|Create"_s;

    void TestBody() override {}

    /// Bounds begin anew.
    void disturb()
    {
        m_supervision.disturb();
        m_archive.disturb();
        m_settled = now();
    }
    void set(std::size_t index, int value, bool onSite = false)
    {
        const SettingRow &row = SettingTable[index];
        if (onSite) {
            Settings settings = m_settings.back();
            settings[index] = value;
            m_visitors.clear();
            require(post("/UpdateAdmin"_ba + row.form + "Config", formOf(row, settings))
                        .contains("uccess"),
                    "the web site does not take a form");
            require(settingsOf(*root->Options()) == settings, "a form is not stored");
        } else {
            row.let(*root->Options(), value);
        }
        if (std::exchange(m_settings.emplace_back(m_settings.back())[index], value) != value) {
            m_settled = now();
            m_archive.settingChanges();
            look();
        }
    }
    /// One of the file operations since the last look or to come fails.
    bool isLocked() const { return fake.files.failAt < 0 || fake.files.failAt > m_operations; }
    bool hasTrouble() const { return isLocked() || fake.files.full > 0 || m_folderComesBack; }
    bool recordsWait() const { return root->Errors()->count() > m_log.records(); }
    void bringFolderBack()
    {
        if (std::exchange(m_folderComesBack, {})) {
            QDir(directory.path()).rename(u"Away"_s, u"Replays"_s);
        }
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
        const std::size_t open = fake.clock.alarms() + QDir(u"/proc/self/fd"_s).count();
        m_open = m_open == 0 ? open : m_open;
        require(open == m_open, "timers or descriptors are left: ", QString::number(open - m_open));
    }
    /// What the tool has asked.
    void deliver()
    {
        if (game.answers() && game.take(true)) {
            const auto isTold = [this] { return server().Status() != ServerQueryStatus::Probing; };
            (void)QTest::qWaitFor(isTold, 10);
        }
    }
    void look()
    {
        m_matches.happen();
        if (m_folderComesBack && now() >= *m_folderComesBack) {
            bringFolderBack();
        }
        const bool hadTrouble = std::exchange(m_hadTrouble, hasTrouble());
        const bool trouble = m_hadTrouble || hadTrouble;
        require(fake.boxes.boxes.isEmpty(), "a box: ", fake.boxes.boxes.value(0));
        lookAtServer(!trouble && !recordsWait());
        lookAtFiles(trouble);
        if (trouble) {
            m_settled = now();
        } else if (now() - m_settled > 4 * Second) {
            m_settings = {m_settings.back()};
        }
    }
    void lookAtServer(bool canBeTold)
    {
        Sight sight = game.look();
        if (sight.endedByOthers) {
            m_log.allow(u"GR Server Class|Supervise"_s, 1); // that it ends again and again
        }
        deliver();
        sight.refused = sight.refused && canBeTold;
        sight.told = m_log.told(CannotStart);
        sight.settings = m_settings.back();
        sight.held = server().Connected() ? server().Process()->PID() : 0;
        sight.well = server().health() == ServerHealth::Well;
        m_supervision.look(sight);
        require(fake.system.handles.size() <= 1, "two handles are open");
        require(fake.system.wrongCloses == 0, "a handle is closed twice");
    }
    void lookAtFiles(bool trouble)
    {
        m_archive.look(now(), m_settings.back(), trouble);
        // Where a new replay cannot be renamed, its room has been made already.
        const qint64 room = isLocked() ? 1'000'000 : fake.files.space;
        if (std::exchange(m_operations, fake.files.operations) == fake.files.operations) {
            return;
        }
        m_log.look(read(ErrorLog), now());
        if (m_folderComesBack) {
            return;
        }
        Archive::Folder folder;
        const QDir replays(path(u"Replays"_s));
        for (const QString &name : replays.entryList({u"*.rpf"_s}, QDir::Files)) {
            folder[name] = platform::readFile(replays.filePath(name));
        }
        m_archive.lookAt(folder, m_settings.back(), trouble, room);
    }

    Supervision m_supervision;
    Archive m_archive;
    Log m_log;
    Matches m_matches{fake.clock, m_archive, m_log,
                      [this](const QString &name, const QByteArray &content) {
                          write(name, content, fake.clock.now());
                      }};
    /// What the settings file may hold; the last is what it is to hold.
    std::vector<Settings> m_settings;
    qint64 m_settled = 0;                    ///< since when it may hold that alone
    std::size_t m_open = 0;                  ///< timers and descriptors, after the first start
    std::optional<qint64> m_folderComesBack; ///< nothing while it is there
    bool m_hadTrouble = false;
    int m_operations = 0; ///< of the files, at the last look
    std::vector<std::unique_ptr<QTcpSocket>> m_visitors;
};
