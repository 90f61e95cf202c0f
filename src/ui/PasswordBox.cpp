#include "ui/PasswordBox.h"

#include "ui/EyeButton.h"

PasswordBox::PasswordBox(QWidget *parent) : QLineEdit(parent), m_eye(new EyeButton(this))
{
    setEchoMode(Password);
    connect(m_eye, &EyeButton::toggled, this,
            [this](bool shown) { setEchoMode(shown ? Normal : Password); });
}

void PasswordBox::hideEvent(QHideEvent *event)
{
    m_eye->setChecked(false);
    QLineEdit::hideEvent(event);
}

void PasswordBox::resizeEvent(QResizeEvent *event)
{
    QLineEdit::resizeEvent(event);
    const int side = height();
    m_eye->setGeometry(width() - side, 0, side, side);
    setTextMargins(0, 0, side, 0);
}

/// However its window has ordered the others.
void PasswordBox::showEvent(QShowEvent *event)
{
    setTabOrder(this, m_eye);
    QLineEdit::showEvent(event);
}
