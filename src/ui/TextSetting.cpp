#include "ui/TextSetting.h"

#include <QLabel>
#include <QLineEdit>

#include <utility>

TextSetting::TextSetting(QLineEdit *box, QLabel *label, SettingValue<QString> value)
    : SettingControl(box), m_box(box), m_value(std::move(value))
{
    label->setBuddy(box);
    box->setAccessibleName(label->text());
    connect(box, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_value.write(text); });
}

void TextSetting::fill()
{
    m_box->setText(m_value.read());
}
