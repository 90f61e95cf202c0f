#include "GameFiles.h"

#include "EventLog.h"
#include "PseudoRandom.h"
#include "Windows1252.h"

#include <QFileInfo>
#include <QSaveFile>
#include <QXmlStreamReader>

#include <array>

namespace {

const QString replayName = QStringLiteral("Data/Save/replay/defaultreplay.rpf");

/// Settings as a fresh installation has them; the lines end in LF here and in CR LF in the file.
const QString freshOptions = QStringLiteral(R"(<?xml version="1.0" encoding="windows-1252"?>
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
)");

const QString freshActiveMods =
    QStringLiteral("// MODS SETTINGS - LIST OF MODS ACTIVE ON THIS SYSTEM\n"
                   "\"\\mods\\coastline\"\n");

struct Mod
{
    QString folder;
    QString title;
};

/// "Origmiss" holds what the game itself brings along and is no mod to switch on or off.
const std::array freshMods = {
    Mod{QStringLiteral("Origmiss"), QStringLiteral("Original Missions")},
    Mod{QStringLiteral("Coastline"), QStringLiteral("Küste und Hafen")},
    Mod{QStringLiteral("NightWatch"), QStringLiteral("Night Watch")},
};

QByteArray gameText(QString text)
{
    return toWindows1252(text.replace(QLatin1Char('\n'), QStringLiteral("\r\n")));
}

QByteArray modDescription(const Mod &mod)
{
    return gameText(QStringLiteral("// MOD DESCRIPTION\nname = \"%1\"\n").arg(mod.title));
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
        if (reader.name() == QLatin1String("MPGameName") && settings.serverName.isNull()) {
            settings.serverName = reader.readElementText(QXmlStreamReader::IncludeChildElements);
        } else if (reader.name() == QLatin1String("MOTD") && settings.messageOfTheDay.isNull()) {
            settings.messageOfTheDay =
                reader.readElementText(QXmlStreamReader::IncludeChildElements);
        }
    }
}

} // namespace

void replaceFile(EventLog &log, const QString &fileName, const QByteArray &content)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() ||
        !file.commit()) {
        log.complain(QStringLiteral("cannot-write %1: %2").arg(fileName, file.errorString()));
    }
}

GameFiles::GameFiles(EventLog &log, const QString &directory) : m_log(log), m_directory(directory)
{
}

void GameFiles::createMissing() const
{
    createMissing(QStringLiteral("options.xml"), gameText(freshOptions));
    createMissing(QStringLiteral("modsset.txt"), gameText(freshActiveMods));
    for (const Mod &mod : freshMods) {
        const QString folder = QStringLiteral("Mods/") + mod.folder;
        m_directory.mkpath(folder);
        createMissing(folder + QStringLiteral("/ModsCont.txt"), modDescription(mod));
    }
    m_directory.mkpath(QFileInfo(replayName).path());
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
    readOptions(readFile(m_directory.filePath(QStringLiteral("options.xml"))), settings);
    settings.activeMods = readActiveMods().join(QStringLiteral(", "));
    return settings;
}

/// The list's lines are "\mods\folder", the quotes included; the first empty line ends it.
QStringList GameFiles::readActiveMods() const
{
    const QByteArray content = readFile(m_directory.filePath(QStringLiteral("modsset.txt")));
    QStringList mods;
    for (const QString &rawLine : fromWindows1252(content).split(QLatin1Char('\n'))) {
        const QString line = rawLine.trimmed();
        if (line.isEmpty()) {
            break;
        }
        if (line.startsWith(QLatin1Char('"'))) {
            mods.append(line.chopped(1).section(QLatin1Char('\\'), -1));
        }
    }
    return mods;
}

QString GameFiles::statisticsPageName() const
{
    return m_directory.filePath(QStringLiteral("missionstats.htm"));
}

void GameFiles::writeReplay(const MatchPlayer &match, const QDateTime &ended) const
{
    const QList<PlayerScore> scores = match.finalScores();
    QStringList lines = {QStringLiteral("SIMULATED REPLAY"), QString::number(match.matchNumber()),
                         ended.toString(Qt::ISODateWithMs), match.scene().map,
                         QString::number(scores.size())};
    for (const PlayerScore &score : scores) {
        lines.append(score.name + QLatin1Char('\t') +
                     QString::number(score.shotKills + score.blastKills));
    }
    lines << QString() << QString();
    PseudoRandom random(static_cast<quint32>(ended.toMSecsSinceEpoch()));
    const QByteArray moves = random.bytes(2048 + random.below(4096));
    m_directory.mkpath(QFileInfo(replayName).path());
    replaceFile(m_log, m_directory.filePath(replayName),
                toWindows1252(lines.join(QLatin1Char('\n'))) + moves);
}
