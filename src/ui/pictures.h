#pragma once

#include <QIcon>
#include <QPixmap>

/// The program's own pictures, compiled in; each for the number of screen pixels a unit of layout.
namespace pictures {

QIcon applicationIcon();
QPixmap header(qreal pixelRatio);
QPixmap team(qreal pixelRatio);

} // namespace pictures
