#include "ui/GameNumberField.h"

#include "core/basNumbers.h"

#include <QLineEdit>

#include <utility>

namespace {

constexpr double Largest = 65535;

/// The number itself is compared, before any rounding: 65535.2 is too large.
bool isAccepted(const QString &text)
{
    if (!fnIsNumeric(text)) {
        return false;
    }
    const double number = text.trimmed().toDouble();
    return number >= 0 && number <= Largest;
}

} // namespace

GameNumberField::GameNumberField(QLineEdit *box, std::function<void()> edited)
    : QObject(box), m_box(box), m_edited(std::move(edited))
{
    connect(box, &QLineEdit::textChanged, this, &GameNumberField::textChanged);
}

bool GameNumberField::holds(std::int32_t number)
{
    return isAccepted(fnToText(number));
}

void GameNumberField::show(std::optional<std::int32_t> number)
{
    m_accepted = number ? fnToText(*number) : QString();
    m_box->setText(m_accepted);
}

std::int32_t GameNumberField::number() const
{
    return fnToInteger(m_accepted);
}

void GameNumberField::textChanged(const QString &text)
{
    if (text == m_accepted) { // what was put back
        return;
    }
    if (isAccepted(text)) {
        m_accepted = text;
        m_edited();
    } else {
        putBack(text);
    }
}

/// The cursor stays where it was before the refused keystroke.
void GameNumberField::putBack(const QString &refused)
{
    const auto added = static_cast<int>(refused.size() - m_accepted.size());
    const int cursor = m_box->cursorPosition() - added;
    m_box->setText(m_accepted);
    m_box->setCursorPosition(cursor);
}
