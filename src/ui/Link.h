#pragma once

#include <QAbstractButton>

/// A text that does something when it is clicked, as a link on a page does. It is one stop of the
/// tab key, shows when it has the keyboard's focus, and is wrapped wherever it must be, so that a
/// text of any length never widens its window.
class Link : public QAbstractButton
{
public:
    explicit Link(QWidget *parent);

    /// As the button's own, but an ampersand is one.
    void setText(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    bool hitButton(const QPoint &position) const override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// What the text takes of that width, the frame of the focus included.
    QRect textRect(int width) const;
};
