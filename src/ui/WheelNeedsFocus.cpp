#include "ui/WheelNeedsFocus.h"

#include <QEvent>
#include <QWidget>

WheelNeedsFocus::WheelNeedsFocus(QWidget *control) : QObject(control), m_control(control)
{
    control->installEventFilter(this);
}

bool WheelNeedsFocus::eventFilter(QObject * /*watched*/, QEvent *event)
{
    if (event->type() != QEvent::Wheel || m_control->hasFocus()) {
        return false;
    }
    event->ignore(); // what lies around it scrolls
    return true;
}
