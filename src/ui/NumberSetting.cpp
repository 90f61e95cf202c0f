#include "ui/NumberSetting.h"

#include "core/basNumbers.h"
#include "core/basUtilities.h"
#include "ui/messages.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>

NumberSetting::NumberSetting(QLineEdit *box, QScrollBar *scroll, QLabel *label,
                             QString rangeMessage, Value value)
    : QObject(box), m_box(box), m_scroll(scroll), m_rangeMessage(std::move(rangeMessage)),
      m_value(std::move(value))
{
    label->setBuddy(box);
    box->setAccessibleName(label->text());
    scroll->setAccessibleName(label->text());
    fitScrollBar();
    box->installEventFilter(this);
    connect(box, &QLineEdit::textChanged, this, &NumberSetting::textChanged);
    connect(scroll, &QScrollBar::valueChanged, this, [this](int position) {
        m_box->setText(fnScrollToTextSum(position, m_scroll->maximum()));
    });
}

void NumberSetting::fill()
{
    m_box->setText(QString::number(m_value.read()));
}

void NumberSetting::textChanged(const QString &text)
{
    if (!fnIsNumeric(text)) {
        refuse(QStringLiteral("Enter a number please"));
        return;
    }
    const std::optional<std::int32_t> number = fnIfInteger(text);
    if (!number || *number < 0 || *number > m_scroll->maximum()) {
        refuse(m_rangeMessage);
        return;
    }
    m_value.write(*number);
    m_scroll->setValue(m_scroll->maximum() - m_value.read());
}

void NumberSetting::refuse(const QString &message)
{
    // The stored value that is put back may itself be out of range; one complaint is enough.
    if (m_complained) {
        return;
    }
    showMessage(message);
    m_complained = true;
    fill();
    m_complained = false;
}

/// Its two arrows stand beside the text box, as those of a spin box do.
void NumberSetting::fitScrollBar()
{
    m_scroll->setFixedHeight(m_box->sizeHint().height());
}

bool NumberSetting::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fitScrollBar();
    }
    if (watched == m_box && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent *>(event)->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            return QCoreApplication::sendEvent(m_scroll, event);
        default:
            break;
        }
    }
    return QObject::eventFilter(watched, event);
}
