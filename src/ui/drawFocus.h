#pragma once

class QRect;
class QStylePainter;
class QWidget;

/// Draws the frame that shows the keyboard's focus on a control that paints itself.
void drawFocus(QStylePainter &painter, const QWidget &control, const QRect &frame);
