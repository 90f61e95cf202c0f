#include "platform/FolderView.h"

#include <QDir>
#include <QProcess>

namespace platform {

bool showFolder(const QString &folder)
{
    QProcess explorer;
    explorer.setProgram(QStringLiteral("explorer.exe"));
    // Always in quotes: it takes a comma for the end of a path.
    explorer.setNativeArguments(
        QStringLiteral("\"%1\"").arg(QDir::toNativeSeparators(QDir::cleanPath(folder))));
    return explorer.startDetached();
}

} // namespace platform
