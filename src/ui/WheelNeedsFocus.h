#pragma once

#include <QObject>

class QWidget;

/// Lets the wheel act on a control only while that has the keyboard's focus: who scrolls past it
/// does not mean it.
class WheelNeedsFocus : public QObject
{
public:
    explicit WheelNeedsFocus(QWidget *control);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *m_control;
};
