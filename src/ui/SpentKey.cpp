#include "ui/SpentKey.h"

#include <QApplication>
#include <QKeyEvent>

SpentKey::SpentKey(QObject *heir) : QObject(heir)
{
    qApp->installEventFilter(this); // a list gets the mouse in a part of its own
}

bool SpentKey::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Space) {
        return watched == parent();
    }
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress) {
        qApp->removeEventFilter(this);
        deleteLater();
    }
    return false;
}
