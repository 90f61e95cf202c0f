#pragma once

#include "ui/SettingControl.h"

#include <QString>

class QLabel;
class QLineEdit;

/// Ties a text box to a setting. Every change of the text is stored, also one made by filling it.
class TextSetting : public SettingControl
{
public:
    TextSetting(QLineEdit *box, QLabel *label, SettingValue<QString> value);

    void fill() override;

private:
    QLineEdit *m_box;
    SettingValue<QString> m_value;
};
