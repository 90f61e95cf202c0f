#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

/// Single-byte text as the game and the web site have it: Windows-1252, one byte a character.
/// Every byte comes back as it was: the five bytes that the code page leaves undefined stand for
/// the control characters U+0081, U+008D, U+008F, U+0090 and U+009D.
namespace platform {

QChar fromCodePage(std::uint8_t byte);
QString fromCodePage(const QByteArray &bytes);
/// A character that has no place in the code page becomes "?"; U+0080 to U+009F keep their value.
QByteArray toCodePage(const QString &text);

} // namespace platform
