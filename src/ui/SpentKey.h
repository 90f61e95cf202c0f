#pragma once

#include <QObject>

/// Keeps the blank that pressed a button, which then switched itself off, from ticking or typing
/// where the keyboard's focus has gone, until another key or the mouse is pressed.
class SpentKey : public QObject
{
public:
    explicit SpentKey(QObject *heir);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
