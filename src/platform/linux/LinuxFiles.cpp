#include "platform/linux/LinuxFiles.h"

#include "platform/linux/SystemFailure.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
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
    Descriptor(const QString &path, int flags)
        : m_descriptor(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, 0666)),
          m_path(path)
    {
        if (m_descriptor < 0) {
            fail(path);
        }
    }

    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor() { ::close(m_descriptor); }

    void write(const QByteArray &content) const
    {
        for (qsizetype written = 0; written < content.size();) {
            const ssize_t count = ::write(m_descriptor, content.constData() + written,
                                          static_cast<size_t>(content.size() - written));
            if (count < 0 && errno != EINTR) {
                fail(m_path);
            }
            written += std::max<ssize_t>(count, 0);
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

} // namespace

void LinuxFiles::remove(const QString &path)
{
    if (::unlink(QFile::encodeName(path).constData()) != 0 && errno != ENOENT) {
        fail(path);
    }
}

void LinuxFiles::create(const QString &path, const QByteArray &content)
{
    Descriptor(path, O_WRONLY | O_CREAT | O_EXCL).write(content);
}

void LinuxFiles::flush(const QString &path)
{
    Descriptor(path, O_RDONLY).flush();
}

void LinuxFiles::copyPermissions(const QString &from, const QString &to)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(from).constData(), &status) != 0) {
        if (errno == ENOENT) {
            return;
        }
        fail(from);
    }
    constexpr mode_t PermissionBits = 07777;
    if (::chmod(QFile::encodeName(to).constData(), status.st_mode & PermissionBits) != 0) {
        fail(to);
    }
}

void LinuxFiles::rename(const QString &from, const QString &to)
{
    if (::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
        fail(to);
    }
}

void LinuxFiles::flushFolder(const QString &path)
{
    Descriptor(path, O_RDONLY | O_DIRECTORY).flush();
}

} // namespace platform
