#include "ui/pictures.h"

using namespace Qt::StringLiterals;

namespace pictures {

QIcon applicationIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256}) {
        icon.addFile(u":/pictures/icon-%1.png"_s.arg(size));
    }
    return icon;
}

QPixmap header()
{
    return {u":/pictures/header.png"_s};
}

QPixmap team()
{
    return {u":/pictures/team.png"_s};
}

QPixmap scaled(const QPixmap &picture, QSize size, qreal pixelRatio)
{
    QPixmap result = picture.scaled((QSizeF(size) * pixelRatio).toSize(), Qt::IgnoreAspectRatio,
                                    Qt::SmoothTransformation);
    result.setDevicePixelRatio(pixelRatio);
    return result;
}

} // namespace pictures
