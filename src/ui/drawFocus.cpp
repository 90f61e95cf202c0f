#include "ui/drawFocus.h"

#include <QStyleOptionFocusRect>
#include <QStylePainter>

void drawFocus(QStylePainter &painter, const QWidget &control, const QRect &frame)
{
    QStyleOptionFocusRect focus;
    focus.initFrom(&control);
    focus.state |= QStyle::State_HasFocus |
                   QStyle::State_KeyboardFocusChange; // also where only Windows would show it
    focus.rect = frame;
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}
