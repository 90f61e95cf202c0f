#include "platform/SystemFiles.h"

#include "platform/EndReplacement.h"
#include "platform/windows/SystemFailure.h"

#include <QDir>

#include <windows.h>

#include <aclapi.h>
#include <algorithm>
#include <array>
#include <limits>
#include <sddl.h>
#include <string>

namespace platform {

namespace {

/// Paths of files carry every character, whatever the code page is.
std::wstring wide(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

/// Tries again while another program, a scanner or a backup, has the file open for a moment.
template <typename Operation>
bool persistently(Operation operation)
{
    constexpr int Attempts = 10;
    constexpr DWORD PauseMilliseconds = 20;
    for (int attempt = 1; !operation(); ++attempt) {
        const DWORD code = GetLastError();
        if (attempt == Attempts ||
            (code != ERROR_SHARING_VIOLATION && code != ERROR_ACCESS_DENIED)) {
            return false;
        }
        Sleep(PauseMilliseconds);
    }
    return true;
}

/// The user's own identifier. The owner of a file that an administrator makes may be a group, which
/// lets the same user in only as an administrator.
std::wstring userId()
{
    std::wstring result = L"OW"; // the file's owner
    HANDLE token = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == 0) {
        return result;
    }
    alignas(TOKEN_USER) std::array<char, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user{};
    DWORD size = 0;
    LPWSTR text = nullptr;
    if (GetTokenInformation(token, TokenUser, user.data(), static_cast<DWORD>(user.size()),
                            &size) != 0 &&
        ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER *>(user.data())->User.Sid, &text) != 0) {
        result = text;
        LocalFree(text);
    }
    CloseHandle(token);
    return result;
}

/// The permissions as the system takes them for a new file; nothing of them for the usual ones.
class SecurityAttributes
{
public:
    explicit SecurityAttributes(const Permissions &permissions)
    {
        if (GetNamedSecurityInfoW(wide(permissions.like).c_str(), SE_FILE_OBJECT,
                                  DACL_SECURITY_INFORMATION, nullptr, nullptr, nullptr, nullptr,
                                  &m_attributes.lpSecurityDescriptor) == ERROR_SUCCESS) {
            return;
        }
        m_attributes.lpSecurityDescriptor = nullptr;
        if (permissions.ownerOnly) {
            // The user, administrators and the system, and nobody whom the folder would let.
            const std::wstring access = L"D:P(A;;FA;;;" + userId() + L")(A;;FA;;;BA)(A;;FA;;;SY)";
            ConvertStringSecurityDescriptorToSecurityDescriptorW(
                access.c_str(), SDDL_REVISION_1, &m_attributes.lpSecurityDescriptor, nullptr);
        }
    }

    SecurityAttributes(const SecurityAttributes &) = delete;
    SecurityAttributes &operator=(const SecurityAttributes &) = delete;
    ~SecurityAttributes() { LocalFree(m_attributes.lpSecurityDescriptor); }

    SECURITY_ATTRIBUTES *attributes()
    {
        return m_attributes.lpSecurityDescriptor != nullptr ? &m_attributes : nullptr;
    }

private:
    SECURITY_ATTRIBUTES m_attributes{sizeof m_attributes, nullptr, FALSE};
};

/// An open file that is closed with the scope.
class OpenFile
{
public:
    OpenFile(const QString &path, DWORD disposition, SECURITY_ATTRIBUTES *permissions = nullptr)
        : m_path(path)
    {
        constexpr DWORD Shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        check(persistently([&] {
            m_handle = CreateFileW(wide(path).c_str(), GENERIC_WRITE, Shared, permissions,
                                   disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
            return m_handle != INVALID_HANDLE_VALUE;
        }));
    }

    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;
    ~OpenFile() { CloseHandle(m_handle); }

    void write(const QByteArray &content, qint64 position = 0) const
    {
        seek(position);
        for (qsizetype done = 0; done < content.size();) {
            const auto length = static_cast<DWORD>(std::min<qsizetype>(
                content.size() - done, std::numeric_limits<std::int32_t>::max()));
            DWORD written = 0;
            check(WriteFile(m_handle, content.constData() + done, length, &written, nullptr) != 0);
            done += written;
        }
    }

    /// Not every file system can; the write then tells. Only for an end behind the present one: a
    /// smaller allocation would cut the file.
    void reserve(qint64 position, qint64 length) const
    {
        FILE_ALLOCATION_INFO allocation{};
        allocation.AllocationSize.QuadPart = position + length;
        check(SetFileInformationByHandle(m_handle, FileAllocationInfo, &allocation,
                                         sizeof allocation) != 0 ||
              GetLastError() != ERROR_DISK_FULL);
    }

    void resize(qint64 size) const
    {
        seek(size);
        check(SetEndOfFile(m_handle) != 0);
    }

    void flush() const { check(FlushFileBuffers(m_handle) != 0); }

private:
    void seek(qint64 position) const
    {
        LARGE_INTEGER distance{};
        distance.QuadPart = position;
        check(SetFilePointerEx(m_handle, distance, nullptr, FILE_BEGIN) != 0);
    }

    void check(bool success) const
    {
        if (!success) {
            throw lastFailure(m_path);
        }
    }

    HANDLE m_handle = INVALID_HANDLE_VALUE;
    QString m_path;
};

} // namespace

bool isDiskFull(const Failure &failure)
{
    constexpr int QuotaExceeded = 1295; // which the headers of mingw-w64 lack
    return failure.number() == ERROR_DISK_FULL || failure.number() == ERROR_HANDLE_DISK_FULL ||
           failure.number() == QuotaExceeded;
}

void SystemFiles::remove(const QString &path)
{
    const bool gone = persistently([&] {
        return DeleteFileW(wide(path).c_str()) != 0 || GetLastError() == ERROR_FILE_NOT_FOUND;
    });
    if (!gone) {
        throw lastFailure(path);
    }
}

void SystemFiles::create(const QString &path, const QByteArray &content,
                         const Permissions &permissions)
{
    OpenFile(path, CREATE_NEW, SecurityAttributes(permissions).attributes()).write(content);
}

void SystemFiles::replaceEnd(const QString &path, qint64 position, const QByteArray &old,
                             const QByteArray &content)
{
    platform::replaceEnd(OpenFile(path, OPEN_EXISTING), position, old, content);
}

void SystemFiles::flush(const QString &path)
{
    OpenFile(path, OPEN_EXISTING).flush();
}

void SystemFiles::rename(const QString &from, const QString &to)
{
    const bool renamed = persistently([&] {
        return MoveFileExW(wide(from).c_str(), wide(to).c_str(),
                           MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    });
    if (!renamed) {
        throw lastFailure(to);
    }
}

/// Nothing is left to do: the renaming itself waits until it is on the disk.
void SystemFiles::flushFolder(const QString & /*path*/) {}

} // namespace platform
