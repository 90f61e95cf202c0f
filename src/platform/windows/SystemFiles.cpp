#include "platform/SystemFiles.h"

#include "platform/windows/SystemFailure.h"

#include <QDir>

#include <windows.h>

#include <algorithm>
#include <limits>
#include <string>

namespace platform {

namespace {

/// Paths of files carry every character, whatever the code page is.
std::wstring wide(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

/// An open file that is closed with the scope.
class OpenFile
{
public:
    OpenFile(const QString &path, DWORD disposition)
        : m_handle(CreateFileW(wide(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                               disposition, FILE_ATTRIBUTE_NORMAL, nullptr)),
          m_path(path)
    {
        check(m_handle != INVALID_HANDLE_VALUE);
    }

    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;
    ~OpenFile() { CloseHandle(m_handle); }

    void write(const QByteArray &content) const
    {
        for (qsizetype position = 0; position < content.size();) {
            const auto length = static_cast<DWORD>(std::min<qsizetype>(
                content.size() - position, std::numeric_limits<std::int32_t>::max()));
            DWORD written = 0;
            check(WriteFile(m_handle, content.constData() + position, length, &written, nullptr) !=
                  0);
            position += written;
        }
    }

    void flush() const { check(FlushFileBuffers(m_handle) != 0); }

private:
    void check(bool success) const
    {
        if (!success) {
            throw lastFailure(m_path);
        }
    }

    HANDLE m_handle;
    QString m_path;
};

} // namespace

void SystemFiles::remove(const QString &path)
{
    if (DeleteFileW(wide(path).c_str()) == 0 && GetLastError() != ERROR_FILE_NOT_FOUND) {
        throw lastFailure(path);
    }
}

/// The permissions are those that the folder gives its files, as they are for `like`.
void SystemFiles::create(const QString &path, const QByteArray &content, const QString & /*like*/)
{
    OpenFile(path, CREATE_NEW).write(content);
}

void SystemFiles::flush(const QString &path)
{
    OpenFile(path, OPEN_EXISTING).flush();
}

void SystemFiles::rename(const QString &from, const QString &to)
{
    if (MoveFileExW(wide(from).c_str(), wide(to).c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
        throw lastFailure(to);
    }
}

/// Nothing is left to do: the renaming itself waits until it is on the disk.
void SystemFiles::flushFolder(const QString & /*path*/) {}

} // namespace platform
