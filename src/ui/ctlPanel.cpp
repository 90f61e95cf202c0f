#include "ui/ctlPanel.h"

#include <QEvent>
#include <QLabel>
#include <QLineEdit>

void ctlPanel::fitFont()
{
    QList<QLabel *> labels = findChildren<QLabel *>();
    labels.removeIf(
        [](const QLabel *label) { return qobject_cast<QLineEdit *>(label->buddy()) == nullptr; });
    int widest = 0;
    for (const QLabel *const label : labels) {
        widest = qMax(widest, label->sizeHint().width());
    }
    for (QLabel *const label : labels) {
        label->setMinimumWidth(widest);
    }
}

void ctlPanel::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fitFont();
    }
}
