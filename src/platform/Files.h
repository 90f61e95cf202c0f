#pragma once

#include <QByteArray>
#include <QFileDevice>
#include <QString>

#include <limits>
#include <system_error>

namespace platform {

class Failure;

/// Who may do what with a file: as with the file `like`, or where that does not exist, everybody
/// whom the system lets by default, or its owner alone.
struct Permissions
{
    QString like = {};
    bool ownerOnly = false;
};

/// The operations that write files, one system call or so each, so that a test can let every single
/// one fail. All throw Failure with the system's code and text.
class Files
{
public:
    virtual ~Files() = default;

    /// A file that does not exist is no failure.
    virtual void remove(const QString &path) = 0;
    /// Creates the file, which must not exist yet, and writes the bytes. It has its permissions
    /// from the beginning.
    virtual void create(const QString &path, const QByteArray &content,
                        const Permissions &permissions) = 0;
    /// Replaces what an existing file has from `position` on, which is `old`, in one write. The
    /// space for a longer end is made certain first, where the file system can, without touching
    /// the file's size and content. Where the write fails nonetheless, the old end is put back.
    /// A process that is killed within the write may leave the new end cut off.
    virtual void replaceEnd(const QString &path, qint64 position, const QByteArray &old,
                            const QByteArray &content) = 0;
    /// Waits until the file's content is on the disk.
    virtual void flush(const QString &path) = 0;
    /// Renames a file of the same folder, replacing one of the new name.
    virtual void rename(const QString &from, const QString &to) = 0;
    /// Waits until a renaming in the folder is on the disk.
    virtual void flushFolder(const QString &path) = 0;
    /// How many bytes more fit on the disk of the folder; negative where that cannot be told.
    virtual qint64 freeSpace(const QString &folder) = 0;
};

enum class Durability {
    SurvivesCrash,    ///< whole after a crash of the program
    SurvivesPowerLoss ///< and after a crash of the machine
};

/// A new content for a file, written beside it and then, with commit(), renamed over it, so that a
/// crash or a full disk at any moment leaves the old or the new content. The name beside it is
/// always the same, so that the next replacement removes what an interrupted one left. A path that
/// is a symbolic link replaces what the link points to, unless that is no file. The permissions are
/// those of the old file where no other is named.
class Replacement
{
public:
    /// Writes the content beside the file. Throws Failure; nothing is left of it then.
    Replacement(Files &files, const QString &path, const QByteArray &content, Durability durability,
                Permissions permissions = {});
    Replacement(const Replacement &) = delete;
    Replacement &operator=(const Replacement &) = delete;
    /// Removes what was not committed.
    ~Replacement();

    /// Puts the new content in the old one's place. Throws Failure; the old file is then in place.
    void commit();

private:
    void discard() noexcept;

    Files &m_files;
    QString m_target;
    QString m_beside;
    Durability m_durability;
    bool m_pending = true;
};

/// Replaces a file whole, in one go. Throws Failure; the old file is then in place.
void replaceFile(Files &files, const QString &path, const QByteArray &content,
                 Durability durability, const Permissions &permissions = {});

/// What a file's operation has failed for, with the file's name.
Failure fileFailure(const QFileDevice &file);

/// What could not be done with a path, with the system's reason.
Failure pathFailure(const QString &what, const std::error_code &code);

/// The file's content, or its first bytes where a limit is given. Throws Failure.
QByteArray readFile(const QString &path, qint64 atMost = std::numeric_limits<qint64>::max());

/// Throws Failure unless the path is a folder whose entries can be listed; a listing itself shows
/// an unreadable one as empty.
void requireFolder(const QString &path);

/// Whether there was no room left, on the disk or within the user's share of it.
bool isDiskFull(const Failure &failure);

/// Whether the name holds a character that some system gives a meaning in paths: a separator, a
/// colon or a wildcard, of which the quote and the angle brackets are some to Windows, too.
bool hasPathCharacter(const QString &name);

/// The name under which a Replacement writes the new content first.
QString replacementName(const QString &path);

} // namespace platform
