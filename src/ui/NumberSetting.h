#pragma once

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>

class QLabel;
class QLineEdit;
class QScrollBar;

/// Ties a text box with a number in it, and the vertical scroll bar beside it, to a setting. Every
/// change of the text stores the number at once, or is refused with a message and taken back. The
/// scroll bar runs from 0 to the largest number and is turned round, so that its upper arrow raises
/// the number; the arrow and page keys in the text box move it.
class NumberSetting : public QObject
{
public:
    struct Value
    {
        std::function<std::int32_t()> read;
        std::function<void(std::int32_t)> write;
    };

    /// The largest number is the scroll bar's maximum; `rangeMessage` tells of the range.
    NumberSetting(QLineEdit *box, QScrollBar *scroll, QLabel *label, QString rangeMessage,
                  Value value);

    /// Shows the stored value. One that is out of range is complained about, as if it were typed.
    void fill();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void textChanged(const QString &text);
    void refuse(const QString &message);
    void fitScrollBar();

    QLineEdit *m_box;
    QScrollBar *m_scroll;
    QString m_rangeMessage;
    Value m_value;
    bool m_complained = false; ///< while the stored value is put back
};
