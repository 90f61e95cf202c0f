#include "ui/Heading.h"

#include <QEvent>

namespace {

constexpr double TimesTheText = 1.3;

} // namespace

Heading::Heading(QWidget *parent) : QLabel(parent)
{
    setWordWrap(true);
    fitFont();
    parent->installEventFilter(this); // a size of its own hides the change from the label itself
}

bool Heading::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FontChange) {
        fitFont();
    }
    return QLabel::eventFilter(watched, event);
}

void Heading::fitFont()
{
    QFont heading = parentWidget()->font();
    if (heading.pointSizeF() > 0) {
        heading.setPointSizeF(heading.pointSizeF() * TimesTheText);
    } else {
        heading.setPixelSize(qRound(heading.pixelSize() * TimesTheText));
    }
    heading.setBold(true);
    setFont(heading);
}
