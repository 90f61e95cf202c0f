#include "platform/FolderView.h"

#include <QDir>
#include <QProcess>

namespace platform {

bool showFolder(const QString &folder)
{
    return QProcess::startDetached(QStringLiteral("explorer.exe"),
                                   {QDir::toNativeSeparators(QDir::cleanPath(folder))});
}

} // namespace platform
