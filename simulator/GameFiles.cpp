#include "GameFiles.h"

#include "EventLog.h"
#include "MatchPlayer.h"
#include "PseudoRandom.h"
#include "Windows1252.h"

#include <QFileInfo>
#include <QSaveFile>
#include <QXmlStreamReader>

#include <array>

using namespace Qt::StringLiterals;

namespace {

const QString ReplayName = u"Data/Save/replay/defaultreplay.rpf"_s;

/// Settings as a fresh installation has them; the lines end in LF here and in CR LF in the file.
const QString FreshOptions = uR"(<?xml version="1.0" encoding="windows-1252"?>
<!-- Settings of the simulated game server -->
<Options>
  <Network>
    <MPGameName>Simulated Server</MPGameName>
    <MOTD>Grüße from the simulated server</MOTD>
    <JoinPort>2346</JoinPort>
    <AnnouncePort>2347</AnnouncePort>
    <GameSynchTimeout>60</GameSynchTimeout>
    <BehindFirewall>FALSE</BehindFirewall>
    <RemoteServerAccess>TRUE</RemoteServerAccess>
    <RemoteServerPasswd></RemoteServerPasswd>
    <ServerList>
      <IPAddress>10.0.0.5</IPAddress>
      <IPAddress>10.0.0.50</IPAddress>
      <IPAddress></IPAddress>
    </ServerList>
  </Network>
  <Game>
    <PlayerName>Jäger</PlayerName>
    <RecordGame>TRUE</RecordGame>
    <Difficulty>2</Difficulty>
  </Game>
  <Display>
    <ScreenWidth>1024</ScreenWidth>
    <ScreenHeight>768</ScreenHeight>
    <ShowDeadBodies>TRUE</ShowDeadBodies>
    <ShowFrameRate>FALSE</ShowFrameRate>
    <ReticuleColorR>64</ReticuleColorR>
    <ReticuleColorG>128</ReticuleColorG>
    <ReticuleColorB>255</ReticuleColorB>
    <ReticuleIFFColorR>255</ReticuleIFFColorR>
    <ReticuleIFFColorG>0</ReticuleIFFColorG>
    <ReticuleIFFColorB>0</ReticuleIFFColorB>
  </Display>
  <Sound>
    <MusicVolume>70</MusicVolume>
    <EffectsVolume>85</EffectsVolume>
  </Sound>
</Options>
)"_s;

const QString FreshActiveMods = u"// MODS SETTINGS - LIST OF MODS ACTIVE ON THIS SYSTEM\n"
                                "\"\\mods\\coastline\"\n"_s;

struct Mod
{
    QString folder;
    QString title;
};

/// "Origmiss" holds what the game itself brings along and is no mod to switch on or off.
const std::array FreshMods = {
    Mod{u"Origmiss"_s, u"Original Missions"_s},
    Mod{u"Coastline"_s, u"Küste und Hafen"_s},
    Mod{u"NightWatch"_s, u"Night Watch"_s},
};

QByteArray gameText(QString text)
{
    return toWindows1252(text.replace(u'\n', u"\r\n"_s));
}

QByteArray modDescription(const Mod &mod)
{
    return gameText(u"// MOD DESCRIPTION\nname = \"%1\"\n"_s.arg(mod.title));
}

QByteArray readFile(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Reads the first element of each of the two names. Qt's reader does not know the code page,
/// so a file that declares it is decoded here; every other encoding is left to the reader.
void readOptions(const QByteArray &content, GameSettings &settings)
{
    const QByteArray declaration = content.left(content.indexOf("?>")).toLower();
    QXmlStreamReader reader;
    if (declaration.contains("windows-1252")) {
        reader.addData(fromWindows1252(content));
    } else {
        reader.addData(content);
    }
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (reader.name() == "MPGameName"_L1 && settings.serverName.isNull()) {
            settings.serverName = reader.readElementText(QXmlStreamReader::IncludeChildElements);
        } else if (reader.name() == "MOTD"_L1 && settings.messageOfTheDay.isNull()) {
            settings.messageOfTheDay =
                reader.readElementText(QXmlStreamReader::IncludeChildElements);
        }
    }
}

} // namespace

void replaceFile(EventLog &log, const QString &fileName, const QByteArray &content)
{
    QSaveFile file(fileName);
    // A commit does not tell that what was written to a buffer found no room on the disk.
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() ||
        !file.flush() || !file.commit()) {
        log.complain(u"cannot-write %1: %2"_s.arg(fileName, file.errorString()));
    }
}

GameFiles::GameFiles(EventLog &log, const QString &directory) : m_log(log), m_directory(directory)
{
}

void GameFiles::createMissing() const
{
    createMissing(u"options.xml"_s, gameText(FreshOptions));
    createMissing(u"modsset.txt"_s, gameText(FreshActiveMods));
    for (const Mod &mod : FreshMods) {
        const QString folder = u"Mods/"_s + mod.folder;
        m_directory.mkpath(folder);
        createMissing(folder + u"/ModsCont.txt"_s, modDescription(mod));
    }
    m_directory.mkpath(QFileInfo(ReplayName).path());
}

void GameFiles::createMissing(const QString &name, const QByteArray &content) const
{
    const QString fileName = m_directory.filePath(name);
    if (!QFileInfo::exists(fileName)) {
        replaceFile(m_log, fileName, content);
    }
}

GameSettings GameFiles::readSettings() const
{
    GameSettings settings;
    readOptions(readFile(m_directory.filePath(u"options.xml"_s)), settings);
    settings.activeMods = readActiveMods().join(u", "_s);
    return settings;
}

/// The list's lines are "\mods\folder", the quotes included; the first empty line ends it.
QStringList GameFiles::readActiveMods() const
{
    const QByteArray content = readFile(m_directory.filePath(u"modsset.txt"_s));
    QStringList mods;
    for (const QString &rawLine : fromWindows1252(content).split(u'\n')) {
        const QString line = rawLine.trimmed();
        if (line.isEmpty()) {
            break;
        }
        if (line.startsWith(u'"')) {
            mods.append(line.chopped(1).section(u'\\', -1));
        }
    }
    return mods;
}

QString GameFiles::statisticsPageName() const
{
    return m_directory.filePath(u"missionstats.htm"_s);
}

void GameFiles::writeReplay(const MatchPlayer &match, const QDateTime &ended) const
{
    const QList<PlayerScore> scores = match.finalScores();
    QStringList lines = {u"SIMULATED REPLAY"_s, QString::number(match.matchNumber()),
                         ended.toString(Qt::ISODateWithMs), match.scene().map,
                         QString::number(scores.size())};
    for (const PlayerScore &score : scores) {
        lines.append(score.name + u'\t' + QString::number(score.shotKills + score.blastKills));
    }
    lines << QString() << QString();
    PseudoRandom random(static_cast<quint32>(ended.toMSecsSinceEpoch()));
    const QByteArray moves = random.bytes(2048 + random.below(4096));
    m_directory.mkpath(QFileInfo(ReplayName).path());
    replaceFile(m_log, m_directory.filePath(ReplayName), toWindows1252(lines.join(u'\n')) + moves);
}
