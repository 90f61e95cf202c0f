#include "ui/CheckBoxSetting.h"

#include "ui/CheckBoxLabel.h"

#include <QCheckBox>

#include <utility>

CheckBoxSetting::CheckBoxSetting(QCheckBox *box, CheckBoxLabel *label, Value value)
    : QObject(box), m_box(box), m_value(std::move(value))
{
    label->setCheckBox(box);
    connect(box, &QCheckBox::clicked, this, [this](bool checked) { m_value.write(checked); });
}

void CheckBoxSetting::fill()
{
    m_box->setChecked(m_value.read());
}
