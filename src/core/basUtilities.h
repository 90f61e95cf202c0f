#pragma once

#include <QString>

#include <cstdint>

/// Decodes the percent escapes of a URL or form value, in time linear in its length. An escape is
/// the code of a character in the code page; "+" is left alone. Each distinct escape is decoded at
/// all its places at once, in the order in which the escapes first stand in the text, and a decoded
/// "%" may begin a new escape: "%2541" is "A". Where hexadecimal digits are missing after a "%" the
/// decoding ends with a record in the error log, and the rest stays as it was by then.
QString fnParseURLValue(const QString &text);

/// Whether the text is a dotted IPv4 address: four parts that read as numbers from 0 to 255. As
/// numbers are read generously, so are addresses: a blank at the end or a fifth part passes.
bool fnIsValidIP(const QString &text);

/// Conversions between the position of a vertical scroll bar, which grows downwards, and the number
/// in the text box beside it, which the upper arrow raises: number = sum - position, where the sum
/// is that of the scroll bar's minimum and maximum. A text that is no number, and a result that
/// does not fit, give an empty text or 0.
QString fnScrollToTextSum(std::int32_t position, std::int32_t sum);
std::int32_t fnTextToScrollSum(const QString &text, std::int32_t sum);

// Of the interface, without a user here: the same with a sum of 32767.
QString fnScrollToText(std::int32_t position);
std::int32_t fnTextToScroll(const QString &text);
