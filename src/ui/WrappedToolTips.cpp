#include "ui/WrappedToolTips.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

using namespace Qt::StringLiterals;

bool WrappedToolTips::eventFilter(QObject *watched, QEvent *event)
{
    auto *const widget = qobject_cast<QWidget *>(watched);
    if (event->type() != QEvent::ToolTip || widget == nullptr || widget->toolTip().isEmpty()) {
        return false;
    }
    // Rich text is wrapped.
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                       u"<qt>%1</qt>"_s.arg(widget->toolTip().toHtmlEscaped()), widget);
    return true;
}
