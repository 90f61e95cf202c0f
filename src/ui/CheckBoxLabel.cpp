#include "ui/CheckBoxLabel.h"

#include "ui/drawFocus.h"

#include <QCheckBox>
#include <QMouseEvent>
#include <QStyle>
#include <QStylePainter>

void CheckBoxLabel::setCheckBox(QCheckBox *box)
{
    m_box = box;
    setBuddy(box);
    box->setAccessibleName(text());
    box->installEventFilter(this);
}

bool CheckBoxLabel::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        update();
    }
    return QLabel::eventFilter(watched, event);
}

void CheckBoxLabel::mousePressEvent(QMouseEvent *event)
{
    m_pressed = isOnText(*event);
}

void CheckBoxLabel::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_box != nullptr && m_pressed && isOnText(*event)) {
        m_box->setFocus(Qt::MouseFocusReason);
        m_box->click();
    }
}

void CheckBoxLabel::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    if (m_box == nullptr || !m_box->hasFocus()) {
        return;
    }
    QStylePainter painter(this);
    drawFocus(painter, *this, textRect());
}

bool CheckBoxLabel::isOnText(const QMouseEvent &event) const
{
    return event.button() == Qt::LeftButton && textRect().contains(event.pos());
}

QRect CheckBoxLabel::textRect() const
{
    return fontMetrics()
        .boundingRect(rect(), static_cast<int>(alignment()) | Qt::TextWordWrap, text())
        .adjusted(-2, -1, 2, 1)
        .intersected(rect());
}
