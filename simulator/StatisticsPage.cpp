#include "StatisticsPage.h"

#include "EventLog.h"
#include "GameFiles.h"
#include "Windows1252.h"

#include <QLocale>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString LineEnd = u"\r\n"_s;

const QStringList Headings = {
    u"Name"_s,         u"Team"_s,           u"Soldier"_s,     u"Status"_s,   u"Gun Kills"_s,
    u"Blast Kills"_s,  u"Gun Shots"_s,      u"Blast Shots"_s, u"Gun Hits"_s, u"Blast Hits"_s,
    u"Gun Accuracy"_s, u"Blast Accuracy"_s, u"Team Kills"_s,  u"Deaths"_s,
};

QString accuracy(int hits, int shots)
{
    return QString::number(shots == 0 ? 0 : hits * 100 / shots) + u'%';
}

QString cells(const QStringList &texts, const QString &tag)
{
    QString row;
    for (const QString &text : texts) {
        row += u"<%1>%2</%1>"_s.arg(tag, text);
    }
    return row;
}

QString playerRow(const PlayerScore &score)
{
    QStringList texts = {score.name, score.team, score.soldier,
                         score.alive ? u"Alive"_s : u"Dead"_s};
    for (const int count : {score.shotKills, score.blastKills, score.gunShots, score.blastShots,
                            score.shotHits, score.blastHits}) {
        texts.append(QString::number(count));
    }
    texts.append(accuracy(score.shotHits, score.gunShots));
    texts.append(accuracy(score.blastHits, score.blastShots));
    texts.append(QString::number(score.teamKills));
    texts.append(QString::number(score.deaths));
    return cells(texts, u"TD"_s);
}

/// The lines before the players. Month and day names are English everywhere.
QStringList pageHead(const QString &map, const QDateTime &ended)
{
    const QString time = QLocale::c().toString(ended, u"ddd MMM dd hh:mm:ss yyyy"_s);
    return {
        u"<HTML>"_s,
        u"<HEAD>"_s,
        u"<META http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1252\">"_s,
        u"<TITLE>Mission Stats ("_s + time,
        u")</TITLE></HEAD><BODY><H2>Map (%1)</H2>"_s.arg(map),
        u"<TABLE BORDER=1>"_s,
        u"<TR>%1</TR>"_s.arg(cells(Headings, u"TH"_s)),
    };
}

} // namespace

QByteArray statisticsPage(const QString &map, const QDateTime &ended,
                          const QList<PlayerScore> &scores)
{
    QStringList lines = pageHead(map, ended);
    for (const PlayerScore &score : scores) {
        lines << u"<TR>"_s << playerRow(score) << u"</TR>"_s;
    }
    lines << u"</TABLE>"_s << u"</BODY>"_s << u"</HTML>"_s;
    return toWindows1252(lines.join(LineEnd) + LineEnd);
}

StatisticsPageWriter::StatisticsPageWriter(EventLog &log, QString fileName,
                                           std::optional<int> pause)
    : m_log(log), m_fileName(std::move(fileName)), m_pause(pause)
{
    m_secondHalf.setSingleShot(true);
    m_secondHalf.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_secondHalf, &QTimer::timeout, &m_secondHalf, [this] { writeWhole(); });
}

void StatisticsPageWriter::write(const QByteArray &page)
{
    m_page = page;
    if (m_pause) {
        writeFirstHalf();
        m_secondHalf.start(*m_pause);
    } else {
        writeWhole();
    }
}

void StatisticsPageWriter::writeFirstHalf()
{
    QFile file(m_fileName);
    const QByteArray half = m_page.left(m_page.size() / 2);
    if (!file.open(QIODevice::WriteOnly) || file.write(half) != half.size()) {
        m_log.complain(u"cannot-write %1: %2"_s.arg(m_fileName, file.errorString()));
    }
}

void StatisticsPageWriter::writeWhole()
{
    replaceFile(m_log, m_fileName, m_page);
}
