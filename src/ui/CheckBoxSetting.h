#pragma once

#include <QObject>

#include <functional>

class QCheckBox;
class QLabel;

/// Ties a check box without a text of its own, and the label beside it, to a setting. A click on
/// either writes the setting at once; filling the check box does not.
class CheckBoxSetting : public QObject
{
public:
    struct Value
    {
        std::function<bool()> read;
        std::function<void(bool)> write;
    };

    CheckBoxSetting(QCheckBox *box, QLabel *label, Value value);

    /// Shows the stored value.
    void fill();

protected:
    /// A click on the label is one on the check box.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QCheckBox *m_box;
    QLabel *m_label;
    Value m_value;
};
