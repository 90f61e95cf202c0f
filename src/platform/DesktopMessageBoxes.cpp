#include "platform/DesktopMessageBoxes.h"

#include "platform/SystemServices.h"

#include <QApplication>
#include <QClipboard>
#include <QEventLoop>
#include <QMessageBox>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr QChar LineMayBreak(0x200b); // without a width

/// Lets lines break within what is longer than a line should be, as long paths are; the box would
/// become as wide as that.
QString breakable(QString text)
{
    static const QRegularExpression longWord(u"\\S{40,}"_s);
    static const QRegularExpression character(u"(\\X)"_s);
    qsizetype position = 0;
    for (QRegularExpressionMatch found = longWord.match(text); found.hasMatch();
         found = longWord.match(text, position)) {
        const QString word = found.captured().replace(character, u"\\1"_s + LineMayBreak);
        text.replace(found.capturedStart(), found.capturedLength(), word);
        position = found.capturedStart() + word.size();
    }
    return text;
}

/// What is copied from a box is the text as it came.
void dropBreaks(QClipboard::Mode mode)
{
    QClipboard &clipboard = *QGuiApplication::clipboard();
    const QString text = clipboard.text(mode);
    if (text.contains(LineMayBreak)) {
        clipboard.setText(QString(text).remove(LineMayBreak), mode);
    }
}

} // namespace

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
    QObject::connect(QGuiApplication::clipboard(), &QClipboard::changed, &box,
                     [&box](QClipboard::Mode mode) {
                         if (box.isActiveWindow()) { // what others copy is theirs
                             dropBreaks(mode);
                         }
                     });
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
