#pragma once

#include "ui/SettingControl.h"

#include <QString>

#include <cstdint>

class QLabel;
class QLineEdit;

/// Ties a text box with a number in it to a setting. Every change of the text stores the number at
/// once, or is refused with a message and taken back.
class NumberSetting : public SettingControl
{
public:
    /// The numbers are those from 0 to `largest`; `rangeMessage` tells of them.
    NumberSetting(QLineEdit *box, QLabel *label, std::int32_t largest, QString rangeMessage,
                  SettingValue<std::int32_t> value);

    /// A stored value that is out of range is complained about, as if it were typed, but later.
    void fill() override;

protected:
    /// Lets the text box show a number; the cursor stays before the same digits.
    void show(const QString &number);
    /// Called when a number has been stored.
    virtual void stored(std::int32_t /*number*/) {}

private:
    void textChanged(const QString &text);
    void refuse(const QString &message);

    QLineEdit *m_box;
    std::int32_t m_largest;
    QString m_rangeMessage;
    SettingValue<std::int32_t> m_value;
    bool m_filling = false;
    bool m_complained = false; ///< while the stored value is put back
};
