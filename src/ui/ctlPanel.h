#pragma once

#include <QWidget>

/// What the main window asks of the panel on a tab.
class ctlPanel : public QWidget
{
public:
    using QWidget::QWidget;

    /// Copies the stored settings into the controls, overwriting what they show.
    virtual void FillFields() = 0;
    /// Refreshes the displays of live state; touches no value that can be edited.
    virtual void PushUpdate() {}
    /// True while the panel holds edits that are not saved.
    virtual bool Dirty() const { return false; }
};
