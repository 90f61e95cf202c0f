#pragma once

#include <QObject>

/// The blank that has pressed a button which switched itself off and gave the keyboard's focus
/// away. Pressed again it does nothing where the focus is now, until another key or the mouse is
/// pressed: there it would tick, or type.
class SpentKey : public QObject
{
public:
    explicit SpentKey(QObject *heir);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
