#include "Windows1252.h"

#include <algorithm>
#include <array>

namespace {

/// The code points of the bytes 0x80 to 0x9F; all other bytes are their own code point.
constexpr std::array<char16_t, 32> UpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char toByte(char16_t character)
{
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
        return static_cast<char>(character);
    }
    const auto *const found = std::ranges::find(UpperControls, character);
    return found == UpperControls.end() ? '?'
                                        : static_cast<char>(0x80 + (found - UpperControls.begin()));
}

} // namespace

QByteArray toWindows1252(const QString &text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar character : text) {
        if (!character.isLowSurrogate()) { // a pair is one character, so one "?"
            bytes.append(toByte(character.unicode()));
        }
    }
    return bytes;
}

QString fromWindows1252(const QByteArray &text)
{
    QString result = QString::fromLatin1(text);
    for (QChar &character : result) {
        if (character.unicode() >= 0x80 && character.unicode() <= 0x9F) {
            character = UpperControls.at(character.unicode() - 0x80U);
        }
    }
    return result;
}
