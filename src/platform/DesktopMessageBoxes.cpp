#include "platform/DesktopMessageBoxes.h"

#include "platform/LineBreaks.h"
#include "platform/SystemServices.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QMessageBox>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace platform {

int DesktopMessageBoxes::show(const QString &text, const QString &title, int style)
{
    const bool asksToRetry = (style & RetryCancel) == RetryCancel;
    if (m_texts.contains(text)) {
        return asksToRetry ? CancelButton : OkButton;
    }

    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    const QString plain = QString(text).replace(u"\r\n"_s, u"\n"_s);
    box.setText(breakable(plain));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if ((style & StopIcon) != 0) {
        box.setIcon(QMessageBox::Critical);
    }
    if ((style & InformationIcon) != 0) {
        box.setIcon(QMessageBox::Information);
    }
    box.setStandardButtons(asksToRetry ? QMessageBox::Retry | QMessageBox::Cancel
                                       : QMessageBox::Ok);
    m_texts.append(text);
    tellOnStandardError(title + u": "_s + plain);
    // At once, for this call returns only after those that came meanwhile.
    QObject::connect(&box, &QDialog::finished, [&] { m_texts.removeOne(text); });
    waitForTurn();
    m_open = &box;
    for (const auto &[alone, answer] :
         {std::pair(RetriesAlone, QMessageBox::Retry), std::pair(CancelsAlone, QMessageBox::Cancel),
          std::pair(AcceptsAlone, QMessageBox::Ok)}) {
        if ((style & alone) != 0) {
            QTimer::singleShot(m_patience, box.button(answer), &QAbstractButton::click);
        }
    }
    switch (box.exec()) {
    case QMessageBox::Retry:
        return RetryButton;
    case QMessageBox::Cancel:
        return CancelButton;
    default:
        return OkButton;
    }
}

/// What opens meanwhile does so in the loop here, and is answered before that loop ends.
void DesktopMessageBoxes::waitForTurn() const
{
    if (!m_open.isNull() && m_open->isVisible()) {
        QEventLoop answered;
        QObject::connect(m_open, &QDialog::finished, &answered, &QEventLoop::quit);
        answered.exec();
    }
}

} // namespace platform
