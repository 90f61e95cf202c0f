#include "ui/WrappedToolTips.h"

#include "platform/LineBreaks.h"

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
    const QString text =
        platform::breakable(widget->toolTip()).toHtmlEscaped().replace(u'\n', u"<br>"_s);
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), u"<qt>%1</qt>"_s.arg(text),
                       widget);
    return true;
}
