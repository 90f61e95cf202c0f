#include "ui/EyeButton.h"

#include "ui/drawFocus.h"

#include <QPainterPath>
#include <QStylePainter>

using namespace Qt::StringLiterals;

namespace {

/// In a square of this size.
constexpr double Size = 16;

QPainterPath lids()
{
    QPainterPath path({1.5, 8});
    path.cubicTo(4, 4, 6, 3.5, 8, 3.5);
    path.cubicTo(10, 3.5, 12, 4, 14.5, 8);
    path.cubicTo(12, 12, 10, 12.5, 8, 12.5);
    path.cubicTo(6, 12.5, 4, 12, 1.5, 8);
    return path;
}

} // namespace

EyeButton::EyeButton(QWidget *parent) : QToolButton(parent)
{
    setCheckable(true);
    setCursor(Qt::ArrowCursor);
    setFocusPolicy(Qt::TabFocus);
    const auto sayWhatAClickDoes = [this] {
        setToolTip(isChecked() ? u"Hide the password"_s : u"Show the password"_s);
        setAccessibleName(toolTip());
    };
    connect(this, &QToolButton::toggled, this, sayWhatAClickDoes);
    sayWhatAClickDoes();
}

void EyeButton::paintEvent(QPaintEvent * /*event*/)
{
    QStylePainter painter(this);
    if (hasFocus()) {
        drawFocus(painter, *this, rect().adjusted(2, 2, -2, -2));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = height() * 0.7 / Size;
    painter.translate(QRectF(rect()).center());
    painter.scale(scale, scale);
    painter.translate(-Size / 2, -Size / 2);
    const QColor colour = palette().color(QPalette::Text);
    painter.setPen(QPen(colour, 1.2));
    painter.drawPath(lids());
    if (isChecked()) {
        painter.drawLine(QPointF(3, 13.5), QPointF(13, 2.5));
    }
    painter.setBrush(colour);
    painter.drawEllipse(QPointF(8, 8), 1.8, 1.8);
}
