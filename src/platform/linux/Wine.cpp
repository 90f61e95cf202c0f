#include "platform/linux/Wine.h"

#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

bool isWindowsProgram(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(2) == "MZ";
}

std::optional<QString> programMappedBy(pid_t process)
{
    QFile maps(u"/proc/%1/maps"_s.arg(process));
    if (!maps.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    // A line is "range access offset device inode path"; only a path has a slash.
    const QList<QByteArray> lines = maps.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const qsizetype start = line.indexOf('/');
        const QByteArray deleted = " (deleted)"_ba;
        const bool replaced = line.endsWith(deleted);
        const QByteArray name =
            line.mid(std::max<qsizetype>(start, 0)).chopped(replaced ? deleted.size() : 0);
        if (start < 0 || !name.toLower().endsWith(".exe")) {
            continue;
        }
        const QString path = QFile::decodeName(name);
        // One whose file was replaced by an update still is that program.
        if (replaced || isWindowsProgram(path)) {
            return path;
        }
    }
    return std::nullopt;
}

} // namespace platform
