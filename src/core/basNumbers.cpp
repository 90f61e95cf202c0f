#include "core/basNumbers.h"

#include "platform/Failure.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

using platform::Failure;

std::optional<double> number(const QString &text)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        u"[ \\t]*[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][+-]?[0-9]+)?[ \\t]*"_s));
    if (!form.match(text).hasMatch()) {
        return std::nullopt;
    }
    // QString::toDouble() reads in the C locale; a number too large for it is infinite.
    return text.trimmed().toDouble();
}

} // namespace

bool fnIsNumeric(const QString &text)
{
    return number(text).has_value();
}

std::optional<std::int32_t> fnRound(double value)
{
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max())) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(rounded);
}

std::optional<std::int32_t> fnIfInteger(const QString &text)
{
    const std::optional<double> value = number(text);
    return value ? fnRound(*value) : std::nullopt;
}

std::int32_t fnToInteger(const QString &text)
{
    if (!fnIsNumeric(text)) {
        throw Failure(Failure::TypeMismatch, u"\"%1\" is not a number"_s.arg(text));
    }
    const std::optional<std::int32_t> value = fnIfInteger(text);
    if (!value) {
        throw Failure(Failure::Overflow, u"\"%1\" is too large a number"_s.arg(text));
    }
    return *value;
}

template <>
std::int32_t fnFromText<std::int32_t>(const QString &text)
{
    return fnToInteger(text);
}

template <>
bool fnFromText<bool>(const QString &text)
{
    return fnToBoolean(text);
}

template <>
QString fnFromText<QString>(const QString &text)
{
    return text;
}

bool fnToBoolean(const QString &text)
{
    const QString word = text.trimmed();
    if (word.compare("True"_L1, Qt::CaseInsensitive) == 0) {
        return true;
    }
    if (word.compare("False"_L1, Qt::CaseInsensitive) == 0) {
        return false;
    }
    const std::optional<double> value = number(text);
    if (!value) {
        throw Failure(Failure::TypeMismatch, u"\"%1\" is neither True nor False"_s.arg(text));
    }
    return *value != 0.0;
}

QString fnToText(bool value)
{
    return value ? u"True"_s : u"False"_s;
}

QString fnToText(std::int32_t value)
{
    return QString::number(value);
}

QString fnToText(const QString &value)
{
    return value;
}
