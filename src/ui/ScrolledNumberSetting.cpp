#include "ui/ScrolledNumberSetting.h"

#include "core/basUtilities.h"
#include "ui/WheelNeedsFocus.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>

#include <utility>

ScrolledNumberSetting::ScrolledNumberSetting(QLineEdit *box, QScrollBar *scroll, QLabel *label,
                                             QString rangeMessage, SettingValue<std::int32_t> value)
    : NumberSetting(box, label, scroll->maximum(), std::move(rangeMessage), std::move(value)),
      m_box(box), m_scroll(scroll)
{
    scroll->setAccessibleName(label->text());
    scroll->setFocusPolicy(Qt::ClickFocus); // first, for a proxy gets it, too
    scroll->setFocusProxy(box);
    new WheelNeedsFocus(scroll);
    fitScrollBar();
    box->installEventFilter(this);
    connect(scroll, &QScrollBar::valueChanged, this,
            [this](int position) { show(fnScrollToTextSum(position, m_scroll->maximum())); });
}

void ScrolledNumberSetting::stored(std::int32_t number)
{
    m_scroll->setValue(m_scroll->maximum() - number);
}

/// Its two arrows stand beside the text box, as those of a spin box do.
void ScrolledNumberSetting::fitScrollBar()
{
    m_scroll->setFixedHeight(m_box->sizeHint().height());
}

bool ScrolledNumberSetting::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fitScrollBar();
    }
    if (watched == m_box && event->type() == QEvent::Wheel) {
        return QCoreApplication::sendEvent(m_scroll, event);
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
    return NumberSetting::eventFilter(watched, event);
}
