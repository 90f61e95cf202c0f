#include "core/basMain.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"
#include "records/basParse.h"

#include <QXmlStreamReader>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using platform::XmlDocument;
using platform::XmlElement;

namespace {

const QByteArray GameParts = "Game Version Date DateDouble DateAdded SortKey2 Map GameType Inserts "
                             "TimeLimit Winner Loser Draw1 Draw2 OrigPath\n";
const QByteArray PlayerParts =
    "Player Name Team Soldier Status\nShotKills\nExpKills\nTotalKills\nGunShots\nExpShots\n"
    "TotalShots\nShotHits\nExpHits\nTotalHits\nShotAccuracy\nExpAccuracy\nTotalAccuracy\nTKs\n"
    "Deaths\n";

void require(bool promise)
{
    if (!promise) {
        std::abort();
    }
}

/// A line for each element, with the names of its attributes.
QByteArray partsOf(const QByteArray &record)
{
    QByteArray parts;
    QXmlStreamReader reader(record);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement) {
            parts += reader.name().toLatin1();
            for (const QXmlStreamAttribute &attribute : reader.attributes()) {
                parts += ' ' + attribute.name().toLatin1();
            }
            parts += '\n';
        }
    }
    require(!reader.hasError());
    return parts;
}

void checkNumbers(XmlDocument &record)
{
    for (const char *name : {"TotalKills", "TotalShots", "TotalHits", "TotalAccuracy"}) {
        for (const XmlElement &element : record.findAll(name)) {
            bool isNumber = false;
            element.text().toDouble(&isNumber);
            require(isNumber);
        }
    }
    const QString date = record.root().attribute("Date");
    require(date.isEmpty() ||
            QDateTime::fromString(date, QStringLiteral("yyyy-MM-dd HH:mm:ss")).isValid());
    require(date.isEmpty() == record.root().attribute("DateDouble").isEmpty());
}

} // namespace

/// Statistics pages of any content: the record is whole, has as many players as the page has rows,
/// and can be written and read again without a loss.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto page =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    static clsZebek root(platform::nativeMachine(), {}); // has the clock
    gRoot = &root;

    XmlDocument record = XMLFromGamePage(page, QStringLiteral("missionstats.htm"));
    const QByteArray bytes = record.toBytes();
    auto readAgain = XmlDocument::parse(bytes);
    require(readAgain && readAgain->toBytes() == bytes);
    checkNumbers(*readAgain);

    const QByteArrayList lines = page.split('\n');
    qsizetype line = 7;
    qsizetype rows = 0;
    const auto endsTable = [&] { return lines[line] == "</TABLE>" || lines[line] == "</TABLE>\r"; };
    for (; line < lines.size() && !endsTable(); line += 3) {
        rows += lines.value(line + 1).startsWith("<TD>") ? 1 : 0;
    }
    require(partsOf(bytes) == GameParts + PlayerParts.repeated(rows));
    require(fnIsWholePage(page) == (line < lines.size()));
    return 0;
}
