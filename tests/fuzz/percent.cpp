#include "core/PercentDecoder.h"
#include "platform/CodePage.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// The decoding as repeated replacement, which the decoder promises to equal.
static bool decodeLiterally(QString &text)
{
    for (qsizetype percent = text.indexOf(u'%'); percent >= 0; percent = text.indexOf(u'%')) {
        const QString code = text.mid(percent + 1, 2);
        int value = 0;
        for (const QChar digit : code) {
            const qsizetype number = QStringView(u"0123456789abcdef").indexOf(digit.toLower());
            if (digit.unicode() > 0x7F || number < 0) {
                return false;
            }
            value = value * 16 + static_cast<int>(number);
        }
        if (code.isEmpty()) {
            return false;
        }
        text.replace(u'%' + code, platform::fromCodePage(static_cast<std::uint8_t>(value)));
    }
    return true;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr std::size_t Longest = 400; // the literal way takes quadratic time
    if (size > Longest) {
        return 0;
    }
    // Mostly what matters: percent signs, digits of both cases, and a few others.
    constexpr char Alphabet[] = "%%%%2222555533441677aAbBfFgG+ z\xFC";
    QByteArray bytes;
    for (std::size_t index = 0; index < size; ++index) {
        bytes.append(Alphabet[data[index] % (sizeof Alphabet - 1)]);
    }
    const QString text = platform::fromCodePage(bytes);

    PercentDecoder decoder(text);
    QString expected = text;
    const bool expectedSuccess = decodeLiterally(expected);
    if (decoder.decode() != expectedSuccess || decoder.text() != expected) {
        std::abort();
    }
    return 0;
}
