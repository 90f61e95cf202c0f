#pragma once

#include "server/ctlGRServer.h"

#include <QIcon>
#include <QRectF>

class QPainter;

/// The game server's health as a picture: a green, amber or red disc with a sign on it, or a grey
/// ring, so that the colour is not all.
namespace stateIcon {

/// Draws the picture into a square, of whatever number of screen pixels.
void paint(QPainter &painter, const QRectF &square, ServerHealth health);

/// The program's icon with the picture in its corner.
QIcon onApplication(ServerHealth health);

} // namespace stateIcon
