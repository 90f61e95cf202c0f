#include "ui/NumberSetting.h"

#include "core/basNumbers.h"
#include "ui/messages.h"

#include <QLabel>
#include <QLineEdit>
#include <QTimer>

#include <utility>

using namespace Qt::StringLiterals;

NumberSetting::NumberSetting(QLineEdit *box, QLabel *label, std::int32_t largest,
                             QString rangeMessage, SettingValue<std::int32_t> value)
    : SettingControl(box), m_box(box), m_largest(largest), m_rangeMessage(std::move(rangeMessage)),
      m_value(std::move(value))
{
    label->setBuddy(box);
    box->setAccessibleName(label->text());
    connect(box, &QLineEdit::textChanged, this, &NumberSetting::textChanged);
}

void NumberSetting::fill()
{
    m_filling = true;
    show(fnToText(m_value.read()));
    m_filling = false;
}

void NumberSetting::show(const QString &number)
{
    if (number == m_box->text()) {
        return;
    }
    const qsizetype behindCursor = m_box->text().size() - m_box->cursorPosition();
    m_box->setText(number);
    m_box->setCursorPosition(static_cast<int>(number.size() - behindCursor));
}

void NumberSetting::textChanged(const QString &text)
{
    if (!fnIsNumeric(text)) {
        refuse(u"Enter a number please"_s);
        return;
    }
    const std::optional<std::int32_t> number = fnIfInteger(text);
    if (!number || *number < 0 || *number > m_largest) {
        refuse(m_rangeMessage);
        return;
    }
    m_value.write(*number);
    if (m_box->text() != text) {
        fill(); // a message box was shown meanwhile, and the panel filled behind it
    }
    stored(m_value.read());
}

void NumberSetting::refuse(const QString &message)
{
    // The stored value that is put back may itself be out of range; one complaint is enough.
    if (m_complained) {
        return;
    }
    if (m_filling) { // nobody has typed it; whoever fills the panel, as the start does, goes on
        QTimer::singleShot(0, this, [message] { showMessage(message); });
    } else {
        showMessage(message);
    }
    m_complained = true;
    fill();
    m_complained = false;
}
