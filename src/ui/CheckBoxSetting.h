#pragma once

#include "ui/SettingControl.h"

class CheckBoxLabel;
class QCheckBox;

/// Ties a check box and the label beside it to a setting. A click on either writes the setting at
/// once; filling the check box does not.
class CheckBoxSetting : public SettingControl
{
public:
    CheckBoxSetting(QCheckBox *box, CheckBoxLabel *label, SettingValue<bool> value);

    void fill() override;

private:
    QCheckBox *m_box;
    SettingValue<bool> m_value;
};
