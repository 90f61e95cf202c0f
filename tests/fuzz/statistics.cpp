#include "core/basMain.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"
#include "records/basParse.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using platform::XmlDocument;

static void require(bool promise)
{
    if (!promise) {
        std::abort();
    }
}

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

    const QByteArrayList lines = page.split('\n');
    qsizetype line = 7;
    qsizetype rows = 0;
    const auto endsTable = [&] { return lines[line] == "</TABLE>" || lines[line] == "</TABLE>\r"; };
    for (; line < lines.size() && !endsTable(); line += 3) {
        rows += lines.value(line + 1).startsWith("<TD>") ? 1 : 0;
    }
    require(static_cast<qsizetype>(record.findAll("Player").size()) == rows);
    require(fnIsWholePage(page) == (line < lines.size()));
    return 0;
}
