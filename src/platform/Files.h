#pragma once

#include <QByteArray>
#include <QString>

#include <limits>

namespace platform {

/// The file operations of which a safe replacement is made, one system call or so each, so that a
/// test can let every single one fail. All throw Failure with the system's code and text.
class Files
{
public:
    virtual ~Files() = default;

    /// A file that does not exist is no failure.
    virtual void remove(const QString &path) = 0;
    /// Creates the file, which must not exist yet, and writes the bytes. It has the permissions of
    /// `like` from the beginning, or the usual ones where that does not exist.
    virtual void create(const QString &path, const QByteArray &content, const QString &like) = 0;
    /// Waits until the file's content is on the disk.
    virtual void flush(const QString &path) = 0;
    /// Renames a file of the same folder, replacing one of the new name.
    virtual void rename(const QString &from, const QString &to) = 0;
    /// Waits until a renaming in the folder is on the disk.
    virtual void flushFolder(const QString &path) = 0;
};

enum class Durability {
    SurvivesCrash,    ///< whole after a crash of the program
    SurvivesPowerLoss ///< and after a crash of the machine
};

/// Replaces a file whole: writes the content beside it and renames that over it, so that a crash
/// or a full disk at any moment leaves the old or the new content. The name beside it is always
/// the same, so that the next call removes what an interrupted one left. A path that is a
/// symbolic link replaces what the link points to, unless that is no file. The permissions are
/// those of the old file or, where another path is named, of that one. Throws Failure; the old file
/// is then in place.
void replaceFile(Files &files, const QString &path, const QByteArray &content,
                 Durability durability, const QString &permissionsOf = {});

/// The file's content, or its first bytes where a limit is given. Throws Failure.
QByteArray readFile(const QString &path, qint64 atMost = std::numeric_limits<qint64>::max());

/// Throws Failure unless the path is a folder whose entries can be listed; a listing itself shows
/// an unreadable one as empty.
void requireFolder(const QString &path);

/// Whether the name holds a character that some system gives a meaning in paths: a separator, a
/// colon or a wildcard, of which the quote and the angle brackets are some to Windows, too.
bool hasPathCharacter(const QString &name);

/// The name under which replaceFile() writes the new content first.
QString replacementName(const QString &path);

} // namespace platform
