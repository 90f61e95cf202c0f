#pragma once

#include <QString>

#include <cstdint>
#include <optional>

/// Numbers and truth values from text, the same rules for the options, the forms, the panels and
/// the game's file. The decimal point is a point whatever the operator's locale.

/// Whether the text is a number: decimal digits with an optional sign, decimal point and exponent,
/// and blanks around it. Infinity, "nan" and hexadecimal digits are none.
bool fnIsNumeric(const QString &text);

/// The number as a 32-bit integer, rounded to the nearest, a half to the even neighbour.
/// Throws platform::Failure TypeMismatch for a text that is no number, Overflow for a number out
/// of range.
std::int32_t fnToInteger(const QString &text);

/// As fnToInteger(), but nothing for a text that it refuses.
std::optional<std::int32_t> fnIfInteger(const QString &text);

/// "True" and "False" in any letter case, or a number, of which zero alone is false; blanks around
/// it do not matter. Throws platform::Failure TypeMismatch for any other text.
bool fnToBoolean(const QString &text);

/// The value that a text stands for, by the rules above; a text stands for itself.
template <typename Value>
Value fnFromText(const QString &text);

/// The text of a value: "True" or "False", decimal digits, a text itself.
QString fnToText(bool value);
QString fnToText(std::int32_t value);
QString fnToText(const QString &value);

/// The value rounded as fnToInteger() does; nothing when a 32-bit integer cannot hold it.
std::optional<std::int32_t> fnRound(double value);
