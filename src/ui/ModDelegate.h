#pragma once

#include <QStyledItemDelegate>

/// Draws the rows of the mods so that, with any palette, the frame of an unchecked box and the
/// selected row are seen, that row also while the keyboard's focus is elsewhere.
class ModDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
