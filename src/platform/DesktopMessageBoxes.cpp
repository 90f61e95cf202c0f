#include "platform/DesktopMessageBoxes.h"

#include <QApplication>
#include <QMessageBox>

namespace platform {

int DesktopMessageBoxes::show(const QString &text, const QString &title, int style)
{
    const bool asksToRetry = (style & RetryCancel) == RetryCancel;
    if (m_open.contains(text)) {
        return asksToRetry ? CancelButton : OkButton;
    }

    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if ((style & StopIcon) != 0) {
        box.setIcon(QMessageBox::Critical);
    }
    box.setStandardButtons(asksToRetry ? QMessageBox::Retry | QMessageBox::Cancel
                                       : QMessageBox::Ok);
    m_open.append(text);
    const int pressed = box.exec();
    m_open.removeOne(text);

    switch (pressed) {
    case QMessageBox::Retry:
        return RetryButton;
    case QMessageBox::Cancel:
        return CancelButton;
    default:
        return OkButton;
    }
}

} // namespace platform
