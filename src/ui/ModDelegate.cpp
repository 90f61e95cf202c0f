#include "ui/ModDelegate.h"

namespace {

/// A colour between that of the list and that of its text.
QColor between(const QPalette &palette, float towardsText)
{
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const auto part = [towardsText](float from, float to) {
        return from + (to - from) * towardsText;
    };
    return QColor::fromRgbF(part(base.redF(), text.redF()), part(base.greenF(), text.greenF()),
                            part(base.blueF(), text.blueF()));
}

} // namespace

void ModDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    QPalette &palette = option->palette;
    palette.setColor(QPalette::Inactive, QPalette::Highlight, between(palette, 0.3F));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, palette.color(QPalette::Text));
    // Styles draw the frame in a darker shade of this, which on a dark list is hardly a frame.
    palette.setColor(QPalette::Window, between(palette, 0.6F));
}
