#pragma once

#include <QObject>

#include <functional>

class CheckBoxLabel;
class QCheckBox;

/// Ties a check box and the label beside it to a setting. A click on either writes the setting at
/// once; filling the check box does not.
class CheckBoxSetting : public QObject
{
public:
    struct Value
    {
        std::function<bool()> read;
        std::function<void(bool)> write;
    };

    CheckBoxSetting(QCheckBox *box, CheckBoxLabel *label, Value value);

    /// Shows the stored value.
    void fill();

private:
    QCheckBox *m_box;
    Value m_value;
};
