#pragma once

#include <QIcon>
#include <QPixmap>

/// The program's own pictures, compiled in, each large enough to be scaled down.
namespace pictures {

QIcon applicationIcon();
QPixmap header();
QPixmap team();

/// A picture of that size on screen, for so many of the screen's pixels a unit of layout.
QPixmap scaled(const QPixmap &picture, QSize size, qreal pixelRatio);

} // namespace pictures
