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

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr Module Here{"clsReplays", "Root Object"};
constexpr Routine Archiving = Here("ArchiveReplay", HookEvent::ArchiveFailed);
constexpr Routine Maintaining = Here("MaintainReplayDirectory", HookEvent::ArchiveFailed);

QString replayPattern()
{
    return u"*.rpf"_s;
}

QFileInfo gameReplay()
{
    return QFileInfo(fnGamePath(u"Data/Save/replay/defaultreplay.rpf"_s));
}

QString stampOf(const QDateTime &changed)
{
    return changed.toString(u"yyyy_MM_dd_HH_mm_ss_"_s);
}

/// A time in the future tells nothing of the replay's age.
bool isStillWritten(const QDateTime &changed)
{
    constexpr qint64 RestMilliseconds = 3000;
    const qint64 age = changed.msecsTo(gRoot->Machine().clock.now());
    return age >= 0 && age < RestMilliseconds;
}

/// The content of the file whose time and size have been looked at already.
QByteArray readUnchanged(const QFileInfo &entry)
{
    QByteArray content = platform::readFile(entry.filePath());
    const QFileInfo now(entry.filePath());
    if (now.lastModified() != entry.lastModified() || now.size() != content.size()) {
        throw platform::Failure(platform::Failure::PathAccess,
                                u"%1: Changed while it was read"_s.arg(entry.filePath()));
    }
    return content;
}

/// The cache has the time at which the last match was recorded. What the game wrote until then is
/// that match's replay or an earlier one's, kept or not wanted. A time in the future, as a clock
/// that was put back leaves it, tells nothing.
bool isOfRecordedMatch(const QDateTime &changed)
{
    const QFileInfo cache(gRoot->StatsCacheFileName());
    const QDateTime recorded = cache.lastModified();
    return cache.isFile() && recorded <= gRoot->Machine().clock.now() && changed <= recorded;
}

} // namespace

void clsReplays::Release()
{
    m_released = true;
    m_timer = nullptr;
}

bool clsReplays::ArchiveReplay(const QString &Name)
{
    const QFileInfo replay = gameReplay();
    const QDateTime changed = replay.lastModified();
    const bool isThere = replay.isFile() && replay.size() > 0; // an empty one is only begun
    if (m_released || !isThere || !changed.isValid() || isStillWritten(changed) ||
        isOfRecordedMatch(changed)) {
        return false;
    }
    const QString stamp = stampOf(changed);
    if (stamp == m_lastStamp || stamp == m_stampUnderWay) {
        return false;
    }
    const auto restore = qScopeGuard(
        [this, before = std::exchange(m_stampUnderWay, stamp)] { m_stampUnderWay = before; });
    const QString target = gRoot->Options()->ReplayFolder() + QDir::separator() + stamp +
                           (Name.isEmpty() ? Name : Name + u'_') + u"replay.rpf"_s;
    Routine step = Archiving; // under whose name a failure is recorded
    return trapRepeated(
        step,
        [&] {
            if (platform::hasPathCharacter(Name)) {
                throw platform::Failure(platform::Failure::PathAccess,
                                        Name + u": No file can have this name"_s);
            }
            return archive(replay, stamp, target, step);
        },
        target);
}

bool clsReplays::MaintainReplayDirectory()
{
    return trap(Maintaining, [this] {
        if (m_released) {
            return false;
        }
        const Folder folder = listFolder(gRoot->Options()->ReplayFolder());
        if (m_released) {
            return false;
        }
        if (isFull(folder)) {
            deleteOldest(folder);
        }
        return true;
    });
}

bool clsReplays::archive(const QFileInfo &replay, const QString &stamp, const QString &target,
                         Routine &step)
{
    // Before the folder is listed, during which the game may go on to the next match.
    const QByteArray content = readUnchanged(replay);
    step = Maintaining;
    const Folder folder = listFolder(gRoot->Options()->ReplayFolder(), stamp);
    step = Archiving;
    if (m_released) {
        return false;
    }
    if (!folder.hasStamp) {
        write(content, target, folder, step);
    }
    m_lastStamp = stamp;
    m_lastFile = target;
    return !folder.hasStamp || QFileInfo::exists(target);
}

void clsReplays::write(const QByteArray &content, const QString &target, const Folder &folder,
                       Routine &step)
{
    std::optional<platform::Replacement> copy;
    const auto writeBeside = [&] {
        copy.emplace(gRoot->Machine().files, target, content,
                     platform::Durability::SurvivesPowerLoss);
    };
    const auto makeRoom = [&] {
        step = Maintaining;
        deleteOldest(folder);
        step = Archiving;
    };
    try {
        writeBeside();
    } catch (const platform::Failure &failure) {
        if (!platform::isDiskFull(failure) || !helpsToDelete(folder, content.size()) ||
            m_roomMadeFor == target) {
            throw;
        }
        makeRoom();
        m_roomMadeFor = target;
        writeBeside();
    }
    if (isFull(folder)) {
        makeRoom(); // of the same one, where it is gone already
    }
    try {
        copy->commit();
    } catch (const platform::Failure &failure) {
        if (!QFileInfo::exists(target)) {
            throw;
        }
        // It is kept, though not yet for certain on the disk. Another try would take it for the
        // next match's, where that is of the same map.
        recordFailure(Archiving, failure);
    }
}

bool clsReplays::isFull(const Folder &folder)
{
    return folder.replays > 0 && folder.replays >= gRoot->Options()->ReplayCount();
}

/// Of a disk that others keep full each match would take a replay, and none would come.
bool clsReplays::helpsToDelete(const Folder &folder, qint64 wanted)
{
    return folder.replays > 0 &&
           gRoot->Machine().files.freeSpace(folder.path) + folder.smallestSize >= wanted;
}

void clsReplays::deleteOldest(const Folder &folder)
{
    gRoot->Machine().files.remove(folder.path + QDir::separator() + folder.smallestName);
}

clsReplays::Folder clsReplays::listFolder(const QString &path, const QString &stamp) const
{
    Folder folder;
    QString before;
    do { // again where another replay was archived meanwhile
        before = m_lastStamp;
        folder = listOnce(path, stamp);
    } while (m_lastStamp != before);
    return folder;
}

clsReplays::Folder clsReplays::listOnce(const QString &path, const QString &stamp) const
{
    platform::requireFolder(path);
    Folder folder{.path = path};
    QDirIterator files(path, {replayPattern(), platform::replacementName(replayPattern())},
                       QDir::Files | QDir::Hidden);
    while (!m_released && files.hasNext()) {
        files.next();
        const QString name = files.fileName();
        if (name.endsWith(replayPattern().mid(1), Qt::CaseInsensitive)) {
            ++folder.replays;
            if (folder.replays == 1 || name < folder.smallestName) {
                folder.smallestName = name;
                folder.smallestSize = files.fileInfo().size();
            }
            folder.hasStamp = folder.hasStamp || name.startsWith(stamp);
        } else {
            // Left by a copy that a crash cut off: no copy is under way while a folder is listed.
            QFile::remove(files.filePath());
        }
        QCoreApplication::processEvents();
    }
    return folder;
}
