#include "app/Program.h"
#include "app/frmGlobal.h"
#include "core/basMain.h"
#include "core/clsOptions.h"
#include "figures.h"
#include "records/basParse.h"
#include "records/clsReplays.h"
#include "records/clsTrackStats.h"
#include "server/clsOptionsXML.h"
#include "server/ctlGRServer.h"
#include "support/FakeMachine.h"
#include "ui/frmMain.h"

#include <QApplication>
#include <QDirIterator>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

// What the files of the game cost: its replay, its statistics page and its settings. The archive is
// measured in a started tool on a display, since the message loop runs while its folder is listed.

namespace {

constexpr qsizetype ReplaySize = 1 << 20;
constexpr int ArchiveRounds = 15;
constexpr int Rounds = 50;
constexpr int MostPlayers = 1000;
/// How much more than the amount a time may grow that grows with the amount.
constexpr double LinearTolerance = 1.25;
constexpr double Thousand = 1000;

/// The file operations, of which the waiting for the disk can be left out: it may hide the rest.
class Disk final : public platform::Files
{
public:
    void remove(const QString &path) override { m_files.remove(path); }
    void create(const QString &path, const QByteArray &content,
                const platform::Permissions &permissions) override
    {
        m_files.create(path, content, permissions);
    }
    void replaceEnd(const QString &path, qint64 position, const QByteArray &old,
                    const QByteArray &content) override
    {
        m_files.replaceEnd(path, position, old, content);
    }
    void rename(const QString &from, const QString &to) override { m_files.rename(from, to); }
    void flush(const QString &path) override
    {
        if (waits) {
            m_files.flush(path);
        }
    }
    qint64 freeSpace(const QString &folder) override { return m_files.freeSpace(folder); }
    void flushFolder(const QString &path) override
    {
        if (waits) {
            m_files.flushFolder(path);
        }
    }

    bool waits = true;

private:
    platform::Files &m_files = platform::nativeMachine().files;
};

template <typename Work>
double millisecondsOf(Work work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return elapsedMilliseconds(timer);
}

template <typename Work>
double medianMicroseconds(Work work)
{
    std::vector<double> figures;
    figures.reserve(Rounds);
    for (int round = 0; round < Rounds; ++round) {
        figures.push_back(millisecondsOf(work) * Thousand);
    }
    return medianOf(figures);
}

/// A page as the game writes it.
QByteArray statisticsPage(int players)
{
    QByteArray rows;
    for (int player = 0; player < players; ++player) {
        rows += "<TR>\r\n<TD>[TEAM] Player " + QByteArray::number(player) +
                "</TD><TD>Red</TD><TD>Rifleman</TD><TD>Alive</TD><TD>3</TD><TD>2</TD><TD>47</TD>"
                "<TD>5</TD><TD>13</TD><TD>2</TD><TD>27%</TD><TD>40%</TD><TD>0</TD><TD>1</TD>\r\n"
                "</TR>\r\n";
    }
    return "<HTML>\r\n<HEAD>\r\n\r\n<TITLE>Mission Stats (Wed Jun 18 20:51:40 2003\r\n"
           ")</TITLE></HEAD><BODY><H2>Map (Castle)</H2>\r\n<TABLE>\r\n<TR></TR>\r\n" +
           rows + "</TABLE>\r\n</BODY>\r\n";
}

std::string number(int value)
{
    return QLocale(QLocale::English).toString(value).toStdString();
}

class Records
{
public:
    Records()
    {
        for (const char *folder : {"Data/Save/replay", "plain"}) {
            QDir(m_directory.path()).mkpath(QLatin1String(folder));
        }
        write("GhostRecon.exe", {});
        write("ZebekSuiteOptions.xml",
              "<options><AutoStartGRServer>False</AutoStartGRServer></options>");
        gRoot = &m_root;
        m_root.Start();
        require(m_root.MainWindow() != nullptr, "the tool did not start");
    }

    static void measureConversion()
    {
        measureConversion(1);
        const double before = measureConversion(32);
        const double after = measureConversion(MostPlayers);
        printFigure("... times as long as with 32", after / before, "x",
                    MostPlayers / 32.0 * LinearTolerance);
    }

    void measureLook()
    {
        const QByteArray page = statisticsPage(32);
        write("missionstats.htm", page);
        write("Data/Save/replay/defaultreplay.rpf", QByteArray(ReplaySize, 'r'));
        clsTrackStats tracker;
        tracker.RecordStatsFile();
        require(contentOf(m_root.StatsCacheFileName()) == page, "the page was not recorded");
        printFigure("Look at the page that was recorded",
                    medianMicroseconds([&] { tracker.RecordStatsFile(); }), "us", Thousand);
        clsTrackStats restarted; // remembers nothing and compares, as long as the page is the same
        printFigure("Look at the same page after a restart",
                    medianMicroseconds([&] { restarted.RecordStatsFile(); }), "us", Thousand);
    }

    void measureSettings()
    {
        QByteArray elements;
        for (int count = 0; count < 1000; ++count) {
            const QByteArray name = "Element" + QByteArray::number(count);
            elements += "  <" + name + ">value " + name + "</" + name + ">\r\n";
        }
        write("options.xml", "<?xml version=\"1.0\"?>\r\n<Options>\r\n" + elements + "</Options>");
        clsOptionsXML options;
        printFigure("Load the game's settings, 1,000 elements",
                    medianMicroseconds([&] { options.Load(); }), "us");
        require(options.IsLoaded(), "the game's settings were not loaded");
        printFigure("Save them", medianMicroseconds([&] { options.Save(); }), "us");
    }

    void measureArchive()
    {
        for (const bool waits : {true, false}) {
            m_disk.waits = waits;
            measureArchive(50);
            const double before = measureArchive(5000);
            const double after = measureArchive(20000);
            printFigure("... times as long as among 5,000", after / before, "x",
                        4 * LinearTolerance);
        }
    }

private:
    void write(const char *name, const QByteArray &content) const
    {
        QFile file(m_directory.filePath(QLatin1String(name)));
        require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
                "a file cannot be written");
    }

    /// Returns the microseconds that a page takes.
    static double measureConversion(int players)
    {
        const QByteArray page = statisticsPage(players);
        const auto convert = [&] { return xmlFromGamePage(page, {}); };
        require(convert().findAll("Player").size() == static_cast<std::size_t>(players),
                "a page was not converted");
        // About as long for each number, so that what else runs disturbs all alike.
        const int pages = MostPlayers / players;
        const double result = medianMicroseconds([&] {
                                  for (int count = 0; count < pages; ++count) {
                                      convert();
                                  }
                              }) /
                              pages;
        printFigure("Convert a page with " + number(players) + " players", result, "us");
        return result;
    }

    /// A folder of so many replays. Those that the rounds delete have a real size.
    QString fillFolder(int replays) const
    {
        QString folder = m_directory.filePath(QString::number(replays));
        QDir(folder).removeRecursively();
        QDir().mkpath(folder);
        for (int replay = 0; replay < replays; ++replay) {
            QFile file(u"%1/2000_01_01_00_00_00_%2_replay.rpf"_s.arg(folder).arg(replay, 5, 10,
                                                                                 QChar(u'0')));
            const qsizetype size = replay < ArchiveRounds ? ReplaySize : 0;
            require(file.open(QIODevice::WriteOnly) && file.write(QByteArray(size, 'o')) == size,
                    "a file cannot be written");
        }
        return folder;
    }

    /// The game has another replay.
    void changeReplay()
    {
        m_changed = m_changed.addSecs(60);
        QFile file(m_replay);
        require(file.open(QIODevice::ReadWrite) &&
                    file.setFileTime(m_changed, QFileDevice::FileModificationTime),
                "the replay's time cannot be set");
    }

    /// The least that archiving could be: going through the folder, and a copy.
    void listAndCopy(const QString &folder)
    {
        QDirIterator files(folder, {u"*.rpf"_s, u"*.rpf.zebek-new"_s}, QDir::Files | QDir::Hidden);
        while (files.hasNext()) {
            files.next();
        }
        m_disk.create(m_copy, contentOf(m_replay), {.like = m_replay});
        m_disk.flush(m_copy);
        m_disk.flushFolder(m_plain);
    }

    static void runLoop(int times)
    {
        for (int count = 0; count < times; ++count) {
            QCoreApplication::processEvents();
        }
    }

    static void requireReplaced(const QString &folder, int replays)
    {
        const QStringList names = QDir(folder).entryList(QDir::Files, QDir::Name);
        const QString oldest = u"_%1_"_s.arg(ArchiveRounds, 5, 10, QChar(u'0'));
        require(names.size() == replays && names.first().contains(oldest) &&
                    names.last().endsWith("Castle_replay.rpf"_L1),
                "a replay was not archived in the place of another");
    }

    /// Returns the milliseconds that one call takes.
    double measureArchive(int replays)
    {
        const QString folder = fillFolder(replays);
        m_root.Options()->ReplayFolder.Let(folder);
        m_root.Options()->ReplayCount.Let(replays);
        std::vector<double> archived;
        std::vector<double> plain;
        std::vector<double> loop;
        for (int round = 0; round < ArchiveRounds; ++round) {
            changeReplay();
            archived.push_back(
                millisecondsOf([&] { m_root.Replays()->ArchiveReplay(u"Castle"_s); }));
            plain.push_back(millisecondsOf([&] { listAndCopy(folder); }));
            loop.push_back(millisecondsOf([&] { runLoop(replays); }));
            QFile::remove(m_copy);
            m_disk.flushFolder(m_plain); // so that the next round does not wait for it
        }
        requireReplaced(folder, replays);
        printFigure("Archive a replay among " + number(replays) +
                        (m_disk.waits ? "" : ", not flushed"),
                    medianOf(archived), "ms");
        printFigure("... a listing of the folder and a copy", medianOf(plain), "ms");
        printFigure("... the message loop, once a replay", medianOf(loop), "ms");
        printFigure("... times as long as a listing and a copy",
                    medianOf(archived) / medianOf(plain), "x", 1.5);
        return medianOf(archived);
    }

    /// Beside the program: the usual place for temporary files may be no disk.
    QTemporaryDir m_directory{QCoreApplication::applicationDirPath() + u"/bench"_s};
    FakeMachine m_fake;
    Disk m_disk;
    platform::Machine m_machine{m_fake.autostart, m_fake.clock,      m_disk,        m_fake.hooks,
                                m_fake.boxes,     m_fake.processEnd, m_fake.system, m_fake.system};
    Program m_root{m_machine, m_directory.path()};
    QString m_replay = m_directory.filePath(u"Data/Save/replay/defaultreplay.rpf"_s);
    QString m_plain = m_directory.filePath(u"plain"_s);
    QString m_copy = m_plain + u"/copy"_s;
    QDateTime m_changed{QDate(2004, 3, 15), QTime(21, 7, 9)};
};

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    return reportingFailure([] {
        Records records;
        Records::measureConversion();
        records.measureLook();
        records.measureSettings();
        records.measureArchive();
        return true;
    });
}
