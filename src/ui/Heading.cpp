#include "ui/Heading.h"

#include <QApplication>
#include <QEvent>

namespace {

constexpr double TimesTheText = 1.3;

} // namespace

Heading::Heading(QWidget *parent) : QLabel(parent)
{
    setWordWrap(true);
    fitFont();
}

bool Heading::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationFontChange) {
        fitFont();
    }
    return QLabel::event(event);
}

void Heading::fitFont()
{
    QFont heading = QApplication::font();
    if (heading.pointSizeF() > 0) {
        heading.setPointSizeF(heading.pointSizeF() * TimesTheText);
    } else {
        heading.setPixelSize(qRound(heading.pixelSize() * TimesTheText));
    }
    heading.setBold(true);
    setFont(heading);
}
