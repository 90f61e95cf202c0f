#include "platform/linux/Wine.h"

#include <QFile>

namespace platform {

bool isWindowsProgram(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(2) == "MZ";
}

std::optional<QString> programMappedBy(pid_t process)
{
    QFile maps(QStringLiteral("/proc/%1/maps").arg(process));
    if (!maps.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    // A line is "range access offset device inode path"; only a path has a slash.
    const QList<QByteArray> lines = maps.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const qsizetype start = line.indexOf('/');
        if (start < 0 || !line.toLower().endsWith(".exe")) {
            continue;
        }
        const QString path = QFile::decodeName(line.mid(start));
        if (isWindowsProgram(path)) {
            return path;
        }
    }
    return std::nullopt;
}

} // namespace platform
