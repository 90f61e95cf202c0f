#include "platform/SystemFiles.h"

#include "platform/EndReplacement.h"
#include "platform/linux/SystemFailure.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

[[noreturn]] void fail(const QString &path)
{
    throw systemFailure(errno, path);
}

/// An open descriptor that is closed with the scope.
class Descriptor
{
public:
    Descriptor(const QString &path, int flags, mode_t mode = 0)
        : m_descriptor(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, mode)),
          m_path(path)
    {
        if (m_descriptor < 0) {
            fail(path);
        }
    }

    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor() { ::close(m_descriptor); }

    void write(const QByteArray &content, off_t position = 0) const
    {
        for (qsizetype written = 0; written < content.size();) {
            const ssize_t count =
                ::pwrite(m_descriptor, content.constData() + written,
                         static_cast<size_t>(content.size() - written), position + written);
            if (count < 0 && errno != EINTR) {
                fail(m_path);
            }
            written += std::max<ssize_t>(count, 0);
        }
    }

    /// Not every file system can; the write then tells.
    void reserve(off_t position, off_t length) const
    {
        if (::fallocate(m_descriptor, FALLOC_FL_KEEP_SIZE, position, length) != 0 &&
            errno != EOPNOTSUPP && errno != EINTR) {
            fail(m_path);
        }
    }

    void resize(off_t size) const
    {
        if (::ftruncate(m_descriptor, size) != 0) {
            fail(m_path);
        }
    }

    void setPermissions(mode_t mode) const
    {
        if (::fchmod(m_descriptor, mode) != 0) {
            fail(m_path);
        }
    }

    void flush() const
    {
        if (::fsync(m_descriptor) != 0) {
            fail(m_path);
        }
    }

private:
    int m_descriptor;
    QString m_path;
};

/// Before the process's mask takes some away.
constexpr mode_t UsualPermissions = 0666;
constexpr mode_t OwnerOnly = 0600;

std::optional<mode_t> modeOf(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return std::nullopt;
    }
    constexpr mode_t PermissionBits = 0777;
    return status.st_mode & PermissionBits;
}

} // namespace

bool isDiskFull(const Failure &failure)
{
    return failure.number() == ENOSPC || failure.number() == EDQUOT;
}

void SystemFiles::remove(const QString &path)
{
    if (::unlink(QFile::encodeName(path).constData()) != 0 && errno != ENOENT) {
        fail(path);
    }
}

void SystemFiles::create(const QString &path, const QByteArray &content,
                         const Permissions &permissions)
{
    const std::optional<mode_t> mode = modeOf(permissions.like);
    const mode_t otherwise = permissions.ownerOnly ? OwnerOnly : UsualPermissions;
    const Descriptor file(path, O_WRONLY | O_CREAT | O_EXCL, mode.value_or(otherwise));
    if (mode) {
        file.setPermissions(*mode); // those that the process's mask has taken away
    }
    file.write(content);
}

void SystemFiles::replaceEnd(const QString &path, qint64 position, const QByteArray &old,
                             const QByteArray &content)
{
    platform::replaceEnd(Descriptor(path, O_WRONLY), position, old, content);
}

void SystemFiles::flush(const QString &path)
{
    Descriptor(path, O_RDONLY).flush();
}

void SystemFiles::rename(const QString &from, const QString &to)
{
    if (::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
        fail(to);
    }
}

void SystemFiles::flushFolder(const QString &path)
{
    Descriptor(path, O_RDONLY | O_DIRECTORY).flush();
}

} // namespace platform
