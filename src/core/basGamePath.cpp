#include "core/basGamePath.h"

#include "core/basMain.h"
#include "core/clsZebek.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString nameIn(const QString &folder, const QString &name)
{
    if (QFileInfo::exists(folder + name)) {
        return name;
    }
    const QStringList entries =
        QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &entry : entries) {
        if (entry.compare(name, Qt::CaseInsensitive) == 0) {
            return entry;
        }
    }
    return name;
}

} // namespace

QString fnGamePath(const QString &relativePath)
{
    return fnGamePathBelow(gRoot->RootDirectory(), relativePath);
}

QString fnGamePathBelow(const QString &folder, const QString &relativePath)
{
    QString path = folder;
    const QStringList names = relativePath.split(u'/');
    for (const QString &name : names) {
        if (!path.endsWith(QDir::separator())) {
            path.append(QDir::separator());
        }
        path.append(nameIn(path, name));
    }
    return path;
}
