#include "records/basParse.h"

#include "core/basMain.h"
#include "core/basNumbers.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Machine.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using platform::XmlDocument;
using platform::XmlElement;

/// Under this name the error log knows the making of a record.
constexpr Routine Conversion{"basParse", "XMLFromGameFile", "Global"};

constexpr qsizetype DateLine = 3;
constexpr qsizetype MapLine = 4;
constexpr qsizetype FirstEndLine = 7;
/// From one line that may end the table to the next.
constexpr qsizetype RowLines = 3;

QStringList linesOf(const QByteArray &page)
{
    QStringList lines = platform::fromCodePage(page).split(u'\n');
    for (QString &line : lines) {
        if (line.endsWith(u'\r')) {
            line.chop(1);
        }
    }
    return lines;
}

/// Where the table ends; nothing when the text ends first.
std::optional<qsizetype> tableEnd(const QStringList &lines)
{
    for (qsizetype line = FirstEndLine; line < lines.size(); line += RowLines) {
        if (lines[line] == "</TABLE>"_L1) {
            return line;
        }
    }
    return std::nullopt;
}

/// The moment in a text of month (English on every machine), day, year and time, else invalid. It
/// is read as UTC, where no change of clocks leaves an hour out.
QDateTime toDateTime(const QString &text)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        u" *([A-Za-z]{3}) +(\\d{1,2}) +(\\d{4}) +(\\d{1,2}:\\d{1,2}:\\d{1,2}) *"_s));
    const QRegularExpressionMatch match = form.match(text);
    return QLocale::c().toDateTime(u"%1 %2 %3 %4 UTC"_s.arg(match.captured(1), match.captured(2),
                                                            match.captured(3), match.captured(4)),
                                   u"MMM d yyyy H:m:s t"_s);
}

/// Days since 30 December 1899, the time of day as the fraction.
double dayNumber(const QDateTime &moment)
{
    constexpr double MillisecondsPerDay = 86400000;
    return static_cast<double>(QDate(1899, 12, 30).daysTo(moment.date())) +
           moment.time().msecsSinceStartOfDay() / MillisecondsPerDay;
}

QString decimal(double value)
{
    constexpr int Digits = 15;
    return QString::number(value, 'g', Digits);
}

/// Invalid for a line without a match time.
QDateTime fnStatsDate(const QString &line)
{
    const QString heading = u"Mission Stats"_s;
    const qsizetype start = line.indexOf(heading);
    if (start < 0) {
        return {};
    }
    constexpr qsizetype Weekday = 4;
    constexpr qsizetype Year = 4;
    const QString rest = line.mid(start + heading.size() + 2 + Weekday);
    const QString monthDayTime = rest.chopped(std::min<qsizetype>(Year + 1, rest.size()));
    const qsizetype second = monthDayTime.lastIndexOf(u' ');
    return toDateTime(monthDayTime.left(second + 1) + rest.right(Year) + monthDayTime.mid(second));
}

QString fnMapName(const QString &line)
{
    const qsizetype open = line.indexOf(u'(');
    const qsizetype close = open < 0 ? -1 : line.indexOf(u')', open);
    return close < 0 ? QString() : line.mid(open + 1, close - open - 1);
}

/// Takes the next cell off the row; empty when there is none.
QString fnNextCell(QString &row)
{
    const QString opening = u"<TD>"_s;
    const QString closing = u"</TD>"_s;
    const qsizetype start = row.indexOf(opening);
    const qsizetype end = row.indexOf(closing);
    if (start < 0 || end < 0) {
        return {};
    }
    const qsizetype text = start + opening.size();
    QString cell = row.mid(text, std::max<qsizetype>(end - text, 0));
    row = row.mid(end + closing.size());
    return cell;
}

/// A count that is no number counts as 0 in a total.
std::int32_t countOf(const QString &cell)
{
    return fnIfInteger(cell).value_or(0);
}

std::int32_t sum(const QString &first, const QString &second)
{
    return fnRound(static_cast<double>(countOf(first)) + countOf(second)).value_or(0);
}

/// Adds two cells of the row and their total.
std::int32_t addPair(QString &row, XmlElement &player, const char *first, const char *second,
                     const char *total)
{
    const QString firstCell = fnNextCell(row);
    const QString secondCell = fnNextCell(row);
    const std::int32_t both = sum(firstCell, secondCell);
    player.append(first).setText(firstCell);
    player.append(second).setText(secondCell);
    player.append(total).setText(QString::number(both));
    return both;
}

void fnAddPlayer(QString row, XmlElement player)
{
    for (const char *const attribute : {"Name", "Team", "Soldier", "Status"}) {
        player.setAttribute(attribute, fnNextCell(row));
    }
    addPair(row, player, "ShotKills", "ExpKills", "TotalKills");
    const std::int32_t shots = addPair(row, player, "GunShots", "ExpShots", "TotalShots");
    const std::int32_t hits = addPair(row, player, "ShotHits", "ExpHits", "TotalHits");
    for (const char *const element : {"ShotAccuracy", "ExpAccuracy"}) {
        player.append(element).setText(fnNextCell(row));
    }
    player.append("TotalAccuracy")
        .setText(shots < 1 ? u"0"_s : decimal(static_cast<double>(hits) / shots));
    for (const char *const element : {"TKs", "Deaths"}) {
        player.append(element).setText(fnNextCell(row));
    }
}

void addHeading(XmlElement game, const QStringList &lines, const QString &path)
{
    const QString heading = lines.value(DateLine);
    const QDateTime date = fnStatsDate(heading);
    const QDateTime now = gRoot->Machine().clock.now();
    const double added = dayNumber(now);
    constexpr double Millionths = 1000000;
    const std::pair<const char *, std::function<QString()>> attributes[] = {
        {"Version", [] { return u"1.00"_s; }},
        {"Date", [&] { return date.toString(u"yyyy-MM-dd HH:mm:ss"_s); }},
        {"DateDouble",
         [&] {
             if (!date.isValid()) {
                 recordFailure(Conversion, {platform::Failure::TypeMismatch,
                                            u"No date in \"%1\""_s.arg(heading)});
                 return QString();
             }
             return decimal(dayNumber(date));
         }},
        {"DateAdded", [&] { return decimal(added); }},
        {"SortKey2", [&] { return decimal((added - std::floor(added)) * Millionths); }},
        {"Map", [&] { return fnMapName(lines.value(MapLine)); }},
    };
    for (const auto &[name, value] : attributes) {
        game.setAttribute(name, value());
    }
    for (const char *const name :
         {"GameType", "Inserts", "TimeLimit", "Winner", "Loser", "Draw1", "Draw2"}) {
        game.setAttribute(name, {});
    }
    game.setAttribute("OrigPath", path);
}

} // namespace

XmlDocument xmlFromGamePage(const QByteArray &page, const QString &path)
{
    const QStringList lines = linesOf(page);
    XmlDocument document = XmlDocument::create("Game");
    XmlElement game = document.root();
    trap(Conversion, [&] { addHeading(game, lines, path); });
    const qsizetype end = tableEnd(lines).value_or(lines.size());
    for (qsizetype line = FirstEndLine + 1; line < end; line += RowLines) {
        if (lines[line].startsWith("<TD>"_L1)) {
            trap(Conversion, [&] { fnAddPlayer(lines[line], game.append("Player")); });
        }
    }
    return document;
}

bool fnIsWholePage(const QByteArray &page)
{
    return tableEnd(linesOf(page)).has_value();
}
