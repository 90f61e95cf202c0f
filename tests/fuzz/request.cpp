#include "app/Program.h"
#include "core/basMain.h"
#include "platform/CodePage.h"
#include "platform/Machine.h"
#include "web/clsWebServerRequest.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Requests of any content, alone and as the body of a good one: whatever breaks off, every field
/// that is kept has a value and is the only one of its name, and a body does not reach the target.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Program root(platform::nativeMachine(), {}); // has no error log: nothing is recorded
    gRoot = &root;
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QByteArray good = QByteArrayLiteral("POST /x HTTP/1.1\r\nHost: a\r\n\r\n");
    for (const QByteArray &text : {bytes, good + bytes}) {
        clsWebServerRequest request;
        request.ParseRequest(platform::fromCodePage(text));
        QStringList keys;
        for (const QString &name : request.FieldNames()) {
            keys.append(name.toCaseFolded());
            if (request.FormField(name).isEmpty()) {
                std::abort();
            }
        }
        if (keys.size() > bytes.count('=') || keys.removeDuplicates() != 0 ||
            (text.size() > bytes.size() && request.URI() != QLatin1String("/x"))) {
            std::abort();
        }
    }
    return 0;
}
