#include "ui/CheckBoxSetting.h"

#include <QCheckBox>
#include <QLabel>
#include <QMouseEvent>

CheckBoxSetting::CheckBoxSetting(QCheckBox *box, QLabel *label, Value value)
    : QObject(box), m_box(box), m_label(label), m_value(std::move(value))
{
    m_box->setAccessibleName(m_label->text());
    m_label->installEventFilter(this);
    connect(m_box, &QCheckBox::clicked, this, [this](bool checked) { m_value.write(checked); });
}

void CheckBoxSetting::fill()
{
    m_box->setChecked(m_value.read());
}

bool CheckBoxSetting::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_label && event->type() == QEvent::MouseButtonRelease) {
        const auto *const mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() == Qt::LeftButton && m_label->rect().contains(mouse->pos())) {
            m_box->setFocus(Qt::MouseFocusReason);
            m_box->click();
        }
    }
    return QObject::eventFilter(watched, event);
}
