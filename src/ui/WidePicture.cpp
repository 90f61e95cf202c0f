#include "ui/WidePicture.h"

#include "ui/pictures.h"

#include <QPainter>

WidePicture::WidePicture(QWidget *parent) : QWidget(parent)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void WidePicture::setPicture(const QPixmap &picture)
{
    m_picture = picture;
    m_shown = {};
    updateGeometry();
}

/// As wide as the text below it likes to be.
QSize WidePicture::sizeHint() const
{
    const int width = 40 * fontMetrics().height();
    return {width, heightForWidth(width)};
}

int WidePicture::heightForWidth(int width) const
{
    return m_picture.isNull() ? 0 : width * m_picture.height() / m_picture.width();
}

void WidePicture::paintEvent(QPaintEvent * /*event*/)
{
    const QSize size(width(), heightForWidth(width()));
    if (m_shown.deviceIndependentSize().toSize() != size ||
        m_shown.devicePixelRatio() != devicePixelRatioF()) {
        m_shown = pictures::scaled(m_picture, size, devicePixelRatioF());
    }
    QPainter(this).drawPixmap(0, 0, m_shown);
}
