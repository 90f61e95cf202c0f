#pragma once

#include "ui/NumberSetting.h"

class QScrollBar;

/// A number with a vertical scroll bar beside its text box. The scroll bar runs from 0 to the
/// largest number and is turned round, so that its upper arrow raises the number; the arrow and
/// page keys in the text box move it, and so does the wheel while the box has the focus.
class ScrolledNumberSetting : public NumberSetting
{
public:
    /// The largest number is the scroll bar's maximum.
    ScrolledNumberSetting(QLineEdit *box, QScrollBar *scroll, QLabel *label, QString rangeMessage,
                          SettingValue<std::int32_t> value);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void stored(std::int32_t number) override;

private:
    void fitScrollBar();

    QLineEdit *m_box;
    QScrollBar *m_scroll;
};
