#include "platform/FolderView.h"

#include <QDesktopServices>
#include <QUrl>

namespace platform {

bool showFolder(const QString &folder)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

} // namespace platform
