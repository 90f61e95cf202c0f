#include "ui/CheckBoxSetting.h"

#include "ui/CheckBoxLabel.h"

#include <QCheckBox>

#include <utility>

CheckBoxSetting::CheckBoxSetting(QCheckBox *box, CheckBoxLabel *label, SettingValue<bool> value)
    : SettingControl(box), m_box(box), m_value(std::move(value))
{
    label->setCheckBox(box);
    connect(box, &QCheckBox::clicked, this, [this](bool checked) {
        m_value.write(checked);
        fill(); // the system may have refused what it keeps itself
    });
}

void CheckBoxSetting::fill()
{
    m_box->setChecked(m_value.read());
}
