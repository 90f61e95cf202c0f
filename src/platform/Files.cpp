#include "platform/Files.h"

#include "platform/Failure.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace platform {

namespace {

QString behindLinks(const QString &path)
{
    const QFileInfo file(path);
    if (!file.isSymLink()) {
        return path;
    }
    // A link whose target is gone has no canonical path; its target is then made anew.
    const QString target = file.canonicalFilePath();
    return target.isEmpty() ? file.symLinkTarget() : target;
}

} // namespace

QByteArray readFile(const QString &path, qint64 atMost)
{
    QFile file(path);
    QByteArray content;
    if (file.open(QIODevice::ReadOnly)) {
        content = file.read(std::min(atMost, file.size()));
    }
    if (file.error() != QFileDevice::NoError) {
        throw Failure(Failure::PathAccess, QStringLiteral("%1: %2").arg(path, file.errorString()));
    }
    return content;
}

void requireFolder(const QString &path)
{
    const QFileInfo folder(path);
    if (!folder.isDir()) {
        throw Failure(Failure::PathAccess, QStringLiteral("%1: No such folder").arg(path));
    }
    if (!folder.isReadable() || !folder.isExecutable()) {
        throw Failure(Failure::PathAccess, QStringLiteral("%1: Cannot be read").arg(path));
    }
}

bool hasPathCharacter(const QString &name)
{
    static const QRegularExpression special(QStringLiteral(R"([/\\:*?"<>|])"));
    return special.match(name).hasMatch();
}

QString replacementName(const QString &path)
{
    return path + QStringLiteral(".zebek-new");
}

void replaceFile(Files &files, const QString &path, const QByteArray &content,
                 Durability durability, const QString &permissionsOf)
{
    const QString target = behindLinks(path);
    if (QFileInfo::exists(target) && !QFileInfo(target).isFile()) {
        throw Failure(Failure::PathAccess, QStringLiteral("%1: Not a file").arg(target));
    }
    const QString beside = replacementName(target);
    files.remove(beside);
    try {
        files.create(beside, content, permissionsOf.isEmpty() ? target : permissionsOf);
        if (durability == Durability::SurvivesPowerLoss) {
            files.flush(beside);
        }
        files.rename(beside, target);
    } catch (const Failure &) {
        try {
            files.remove(beside);
        } catch (const Failure &) { // NOLINT(bugprone-empty-catch)
            // The first failure is the one to report; the next replacement removes the rest.
        }
        throw;
    }
    if (durability == Durability::SurvivesPowerLoss) {
        files.flushFolder(QFileInfo(target).absolutePath());
    }
}

} // namespace platform
