#include "app/Program.h"
#include "core/basMain.h"
#include "platform/Machine.h"
#include "records/basParse.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using platform::XmlDocument;

/// Statistics pages of any content: the record can be written and read again without a loss.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto page =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    static Program root(platform::nativeMachine(), {}); // has the clock
    gRoot = &root;

    XmlDocument record = xmlFromGamePage(page, QStringLiteral("missionstats.htm"));
    const QByteArray bytes = record.toBytes();
    auto readAgain = XmlDocument::parse(bytes);
    if (!readAgain || readAgain->toBytes() != bytes) {
        std::abort();
    }
    return 0;
}
