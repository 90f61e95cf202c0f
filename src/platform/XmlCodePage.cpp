#include "platform/XmlCodePage.h"

#include "platform/CodePage.h"

#include <QString>

#include <bit>
#include <cstring>
#include <libxml/encoding.h>
#include <mutex>

namespace platform {

namespace {

/// What the library expects for a character that the encoding lacks; it then writes a reference.
constexpr int NotInCodePage = -2;

/// How many bytes a character takes in UTF-8, by the first of them.
int utf8Length(unsigned char first)
{
    const int leadingOnes = std::countl_one(first);
    return leadingOnes == 0 ? 1 : leadingOnes;
}

// Both convert as much as there is room for. They are given the lengths of output and input and
// return the lengths that they have written and read.

int toUtf8(unsigned char *out, int *outLength, const unsigned char *in, int *inLength)
{
    int written = 0;
    int taken = 0;
    for (; taken < *inLength; ++taken) {
        const QByteArray character = QString(fromCodePage(std::uint8_t{in[taken]})).toUtf8();
        if (written + character.size() > *outLength) {
            break;
        }
        std::memcpy(out + written, character.constData(),
                    static_cast<std::size_t>(character.size()));
        written += static_cast<int>(character.size());
    }
    *outLength = written;
    *inLength = taken;
    return written;
}

int fromUtf8(unsigned char *out, int *outLength, const unsigned char *in, int *inLength)
{
    if (in == nullptr) { // asked for what begins a file: nothing
        *outLength = 0;
        *inLength = 0;
        return 0;
    }
    int written = 0;
    int taken = 0;
    bool known = true;
    while (known && taken < *inLength && written < *outLength) {
        const int length = utf8Length(in[taken]);
        if (taken + length > *inLength) {
            break; // the rest comes with the next call
        }
        const QString character =
            QString::fromUtf8(reinterpret_cast<const char *>(in + taken), length);
        const QByteArray byte = toCodePage(character);
        // Not all that is converted comes back: "?" stands for what the code page lacks, of a byte
        // order mark nothing is left, and controls from U+0080 on share their bytes with letters.
        known = !byte.isEmpty() && fromCodePage(byte) == character;
        if (known) {
            out[written++] = static_cast<unsigned char>(byte.front());
            taken += length;
        }
    }
    *outLength = written;
    *inLength = taken;
    return known ? written : NotInCodePage;
}

} // namespace

void registerXmlCodePage()
{
    static std::once_flag registered;
    std::call_once(registered, [] {
        xmlNewCharEncodingHandler("WINDOWS-1252", toUtf8, fromUtf8);
        xmlAddEncodingAlias("WINDOWS-1252", "CP1252");
    });
}

} // namespace platform
