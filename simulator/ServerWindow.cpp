#include "ServerWindow.h"

#include <QFontDatabase>

ServerWindow::ServerWindow(const QString &caption)
{
    setWindowTitle(caption);
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setMargin(12);
    setMinimumSize(520, 380);
}

void ServerWindow::closeEvent(QCloseEvent *event)
{
    event->ignore();
    Q_EMIT closeRequested();
}
