#include "ui/TextSetting.h"

#include "ui/showText.h"

#include <QLabel>
#include <QLineEdit>

#include <limits>
#include <utility>

TextSetting::TextSetting(QLineEdit *box, QLabel *label, SettingValue<QString> value)
    : SettingControl(box), m_box(box), m_value(std::move(value))
{
    label->setBuddy(box);
    box->setAccessibleName(label->text());
    box->setMaxLength(std::numeric_limits<int>::max()); // what were cut here would be stored so
    connect(box, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_value.write(text); });
}

void TextSetting::fill()
{
    showText(*m_box, m_value.read());
}
