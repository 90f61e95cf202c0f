#include "platform/CodePage.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

/// The characters of the bytes 0x80 to 0x9F; every other byte is the character of its own value.
constexpr std::array<char16_t, 32> Special{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
constexpr std::uint8_t FirstSpecial = 0x80;

char toByte(QChar character)
{
    const char16_t code = character.unicode();
    const auto *const special = std::find(Special.begin(), Special.end(), code);
    if (special != Special.end()) {
        return static_cast<char>(FirstSpecial + (special - Special.begin()));
    }
    return code <= 0xFF ? static_cast<char>(code) : '?';
}

} // namespace

QChar fromCodePage(std::uint8_t byte)
{
    const std::size_t index = static_cast<std::size_t>(byte) - FirstSpecial;
    return index < Special.size() ? QChar(Special[index]) : QChar(char16_t{byte});
}

QString fromCodePage(const QByteArray &bytes)
{
    QString text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        text.append(fromCodePage(static_cast<std::uint8_t>(byte)));
    }
    return text;
}

QByteArray toCodePage(const QString &text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar character : text) {
        if (!character.isLowSurrogate()) { // a pair is one character
            bytes.append(toByte(character));
        }
    }
    return bytes;
}

} // namespace platform
