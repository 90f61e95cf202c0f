#include "records/clsReplays.h"

#include "core/basGamePath.h"
#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Machine.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace {

constexpr Routine routine(const char *name)
{
    return {"clsReplays", name, "Root Object"};
}

QString replayPattern()
{
    return QStringLiteral("*.rpf");
}

QString archiveName(const QDateTime &changed, const QString &name)
{
    const QString stamp = changed.toString(QStringLiteral("yyyy_MM_dd_HH_mm_ss"));
    return name.isEmpty() ? stamp + QStringLiteral("_replay.rpf")
                          : QStringLiteral("%1_%2_replay.rpf").arg(stamp, name);
}

/// The content of the file whose time and size have been looked at already.
QByteArray readUnchanged(const QFileInfo &entry)
{
    QByteArray content = platform::readFile(entry.filePath());
    const QFileInfo now(entry.filePath());
    if (now.lastModified() != entry.lastModified() || now.size() != content.size()) {
        throw platform::Failure(
            platform::Failure::PathAccess,
            QStringLiteral("%1: Changed while it was read").arg(entry.filePath()));
    }
    return content;
}

platform::Failure fileFailure(const QFile &file)
{
    return {platform::Failure::PathAccess,
            QStringLiteral("%1: %2").arg(file.fileName(), file.errorString())};
}

} // namespace

void clsReplays::Release()
{
    m_released = true;
    m_timer = nullptr;
}

void clsReplays::ArchiveReplay(const QString &Name)
{
    Trap(routine("ArchiveReplay"), [&] {
        const QString source = fnGamePath(QStringLiteral("Data/Save/replay/defaultreplay.rpf"));
        const QFileInfo entry(source);
        const QDateTime changed = entry.lastModified();
        if (m_released || !entry.isFile() || !changed.isValid()) {
            return;
        }
        if (platform::hasPathCharacter(Name)) {
            throw platform::Failure(platform::Failure::PathAccess,
                                    Name + QStringLiteral(": No file can have this name"));
        }
        const QString target =
            gRoot->Options()->ReplayFolder() + QDir::separator() + archiveName(changed, Name);
        if (target == m_lastArchived || target == m_underWay || QFile::exists(target)) {
            return;
        }
        // Before another replay makes place for it, and before the game goes on to the next match,
        // which it may do while the folder is listed.
        const QByteArray replay = readUnchanged(entry);
        const auto restore = qScopeGuard(
            [this, before = std::exchange(m_underWay, target)] { m_underWay = before; });
        if (MaintainReplayDirectory()) {
            platform::replaceFile(gRoot->Machine().files, target, replay,
                                  platform::Durability::SurvivesPowerLoss);
            m_lastArchived = target;
        }
    });
}

bool clsReplays::MaintainReplayDirectory()
{
    return Trap(routine("MaintainReplayDirectory"), [this] {
        if (m_released) {
            return false;
        }
        const QString path = gRoot->Options()->ReplayFolder();
        const Folder folder = listFolder(path);
        if (m_released) {
            return false;
        }
        if (folder.replays > 0 && folder.replays >= gRoot->Options()->ReplayCount()) {
            QFile oldest(path + QDir::separator() + folder.smallestName);
            if (!oldest.remove() && oldest.exists()) { // the operator may have been quicker
                throw fileFailure(oldest);
            }
        }
        return true;
    });
}

clsReplays::Folder clsReplays::listFolder(const QString &path) const
{
    platform::requireFolder(path);
    Folder folder;
    QDirIterator files(path, {replayPattern(), platform::replacementName(replayPattern())},
                       QDir::Files | QDir::Hidden);
    while (!m_released && files.hasNext()) {
        files.next();
        const QString name = files.fileName();
        if (name.endsWith(replayPattern().mid(1), Qt::CaseInsensitive)) {
            ++folder.replays;
            if (folder.replays == 1 || name < folder.smallestName) {
                folder.smallestName = name;
            }
        } else {
            QFile::remove(files.filePath()); // left by a copy that a crash cut off
        }
        QCoreApplication::processEvents();
    }
    return folder;
}
