#pragma once

#include <QLabel>

class QCheckBox;

/// The text of a check box that has none of its own: a click on it is one on the check box, and it
/// shows when the check box has the keyboard's focus, which a box alone hardly can.
class CheckBoxLabel : public QLabel
{
public:
    using QLabel::QLabel;

    void setCheckBox(QCheckBox *box);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// Where the text stands; the label may be much wider.
    QRect textRect() const;
    bool isOnText(const QMouseEvent &event) const;

    QCheckBox *m_box = nullptr;
    bool m_pressed = false;
};
