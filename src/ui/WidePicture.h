#pragma once

#include <QPixmap>
#include <QWidget>

/// A picture as wide as there is place.
class WidePicture : public QWidget
{
public:
    explicit WidePicture(QWidget *parent);

    void setPicture(const QPixmap &picture);

    QSize sizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap m_picture;
    QPixmap m_shown; ///< in the widget's size
};
