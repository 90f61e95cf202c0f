#pragma once

#include <QWidget>

class clsMods;

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
    /// Reads the mods anew, which others have changed; unsaved edits stay.
    virtual void loadMods() {}
    /// The mods that the panel edits; null for a panel without mods.
    virtual const clsMods *ModsList() const { return nullptr; }

    /// What stays in sight below the panel when that is scrolled; null where all is scrolled.
    virtual QWidget *footer() const { return nullptr; }

    /// Fits what does not follow the font by itself: the boxes of all groups begin in one column.
    virtual void fitFont();

protected:
    void changeEvent(QEvent *event) override;
};
