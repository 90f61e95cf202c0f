#include "StatisticsPage.h"

#include "EventLog.h"
#include "GameFiles.h"
#include "Windows1252.h"

#include <QLocale>

#include <utility>

namespace {

const QString lineEnd = QStringLiteral("\r\n");

const QStringList headings = {
    QStringLiteral("Name"),       QStringLiteral("Team"),         QStringLiteral("Soldier"),
    QStringLiteral("Status"),     QStringLiteral("Gun Kills"),    QStringLiteral("Blast Kills"),
    QStringLiteral("Gun Shots"),  QStringLiteral("Blast Shots"),  QStringLiteral("Gun Hits"),
    QStringLiteral("Blast Hits"), QStringLiteral("Gun Accuracy"), QStringLiteral("Blast Accuracy"),
    QStringLiteral("Team Kills"), QStringLiteral("Deaths"),
};

QString accuracy(int hits, int shots)
{
    return QString::number(shots == 0 ? 0 : hits * 100 / shots) + QLatin1Char('%');
}

QString cells(const QStringList &texts, const QString &tag)
{
    QString row;
    for (const QString &text : texts) {
        row += QStringLiteral("<%1>%2</%1>").arg(tag, text);
    }
    return row;
}

QString playerRow(const PlayerScore &score)
{
    QStringList texts = {score.name, score.team, score.soldier,
                         score.alive ? QStringLiteral("Alive") : QStringLiteral("Dead")};
    for (const int count : {score.shotKills, score.blastKills, score.gunShots, score.blastShots,
                            score.shotHits, score.blastHits}) {
        texts.append(QString::number(count));
    }
    texts.append(accuracy(score.shotHits, score.gunShots));
    texts.append(accuracy(score.blastHits, score.blastShots));
    texts.append(QString::number(score.teamKills));
    texts.append(QString::number(score.deaths));
    return cells(texts, QStringLiteral("TD"));
}

/// The lines before the players. Month and day names are English everywhere.
QStringList pageHead(const QString &map, const QDateTime &ended)
{
    const QString time = QLocale::c().toString(ended, QStringLiteral("ddd MMM dd hh:mm:ss yyyy"));
    return {
        QStringLiteral("<HTML>"),
        QStringLiteral("<HEAD>"),
        QStringLiteral(
            "<META http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1252\">"),
        QStringLiteral("<TITLE>Mission Stats (") + time,
        QStringLiteral(")</TITLE></HEAD><BODY><H2>Map (%1)</H2>").arg(map),
        QStringLiteral("<TABLE BORDER=1>"),
        QStringLiteral("<TR>%1</TR>").arg(cells(headings, QStringLiteral("TH"))),
    };
}

} // namespace

QByteArray statisticsPage(const QString &map, const QDateTime &ended,
                          const QList<PlayerScore> &scores)
{
    QStringList lines = pageHead(map, ended);
    for (const PlayerScore &score : scores) {
        lines << QStringLiteral("<TR>") << playerRow(score) << QStringLiteral("</TR>");
    }
    lines << QStringLiteral("</TABLE>") << QStringLiteral("</BODY>") << QStringLiteral("</HTML>");
    return toWindows1252(lines.join(lineEnd) + lineEnd);
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
        m_log.complain(QStringLiteral("cannot-write %1: %2").arg(m_fileName, file.errorString()));
    }
}

void StatisticsPageWriter::writeWhole()
{
    replaceFile(m_log, m_fileName, m_page);
}
