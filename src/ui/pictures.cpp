#include "ui/pictures.h"

using namespace Qt::StringLiterals;

namespace pictures {

namespace {

/// A picture with a twin of double size beside it, named "@2x".
QPixmap load(const QString &name, QSize size, qreal pixelRatio)
{
    return QIcon(name).pixmap(size, pixelRatio);
}

} // namespace

QIcon applicationIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256}) {
        icon.addFile(u":/pictures/icon-%1.png"_s.arg(size));
    }
    return icon;
}

QPixmap header(qreal pixelRatio)
{
    return load(u":/pictures/header.png"_s, {640, 110}, pixelRatio);
}

QPixmap team(qreal pixelRatio)
{
    return load(u":/pictures/team.png"_s, {400, 300}, pixelRatio);
}

} // namespace pictures
