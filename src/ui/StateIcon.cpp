#include "ui/StateIcon.h"

#include "ui/pictures.h"

#include <QPainter>
#include <QPainterPath>

namespace stateIcon {

namespace {

/// What stands on the disc, in the unit square.
QPainterPath signOf(ServerHealth health)
{
    QPainterPath path;
    const auto line = [&path](QPointF from, QPointF to) {
        path.moveTo(from);
        path.lineTo(to);
    };
    switch (health) {
    case ServerHealth::Unknown:
        break;
    case ServerHealth::Well: // a tick
        line({0.28, 0.52}, {0.44, 0.68});
        path.lineTo(0.73, 0.36);
        break;
    case ServerHealth::Ailing: // an exclamation mark
        line({0.5, 0.22}, {0.5, 0.56});
        line({0.5, 0.75}, {0.5, 0.77});
        break;
    case ServerHealth::Down: // a cross
        line({0.33, 0.33}, {0.67, 0.67});
        line({0.67, 0.33}, {0.33, 0.67});
        break;
    }
    return path;
}

/// Each can be told from a light and from a dark ground.
QColor colourOf(ServerHealth health)
{
    switch (health) {
    case ServerHealth::Unknown:
        return {0x80, 0x80, 0x80};
    case ServerHealth::Well:
        return {0x2e, 0x9e, 0x3f};
    case ServerHealth::Ailing:
        return {0xf0, 0x9d, 0x00};
    case ServerHealth::Down:
        return {0xd3, 0x2f, 0x2f};
    }
    return {};
}

} // namespace

void paint(QPainter &painter, const QRectF &square, ServerHealth health)
{
    constexpr qreal Stroke = 0.13;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width(), square.height());
    const QColor colour = colourOf(health);
    if (health == ServerHealth::Unknown) {
        painter.setPen(QPen(colour, Stroke));
        painter.drawEllipse(QPointF(0.5, 0.5), 0.42, 0.42);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawEllipse(QPointF(0.5, 0.5), 0.5, 0.5);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Qt::white, Stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(signOf(health));
    }
    painter.restore();
}

QIcon onApplication(ServerHealth health)
{
    constexpr qreal Share = 0.55; ///< of the icon's width
    const QIcon application = pictures::applicationIcon();
    QIcon icon;
    for (const QSize size : application.availableSizes()) {
        QPixmap picture = application.pixmap(size, 1);
        const qreal width = size.width() * Share;
        const qreal rim = size.width() / 24.0;
        const QRectF corner(size.width() - width, size.height() - width, width, width);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white); // parts it from the icon
        painter.drawEllipse(corner);
        paint(painter, corner.adjusted(rim, rim, -rim, -rim), health);
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

} // namespace stateIcon
