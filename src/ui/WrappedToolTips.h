#pragma once

#include <QObject>

/// Breaks the lines of long tooltips, which as plain text run across the whole screen. An event
/// filter of the application.
class WrappedToolTips : public QObject
{
protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
