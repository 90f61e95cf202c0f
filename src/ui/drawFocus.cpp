#include "ui/drawFocus.h"

#include <QStyleOptionFocusRect>
#include <QStylePainter>

void drawFocus(QStylePainter &painter, const QWidget &control, const QRect &frame)
{
    if (!control.hasFocus()) {
        return;
    }
    QStyleOptionFocusRect focus;
    focus.initFrom(&control);
    focus.state |= QStyle::State_KeyboardFocusChange; // also where only Windows would show it
    focus.rect = frame;
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}
