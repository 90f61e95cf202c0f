#include "platform/linux/ErrorCodes.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace platform {

namespace {

struct Translation
{
    std::uint32_t windowsCode;
    int error;
};

/// Of several rows with the same code or errno the first one holds.
constexpr std::array Translations{
    Translation{2, ENOENT},         // ERROR_FILE_NOT_FOUND
    Translation{3, ENOTDIR},        // ERROR_PATH_NOT_FOUND
    Translation{4, EMFILE},         // ERROR_TOO_MANY_OPEN_FILES
    Translation{5, EACCES},         // ERROR_ACCESS_DENIED
    Translation{5, EPERM},          //
    Translation{5, EROFS},          //
    Translation{8, ENOMEM},         // ERROR_NOT_ENOUGH_MEMORY
    Translation{31, EIO},           // ERROR_GEN_FAILURE, also for what has no counterpart
    Translation{32, EBUSY},         // ERROR_SHARING_VIOLATION
    Translation{87, EINVAL},        // ERROR_INVALID_PARAMETER
    Translation{112, ENOSPC},       // ERROR_DISK_FULL
    Translation{112, EDQUOT},       //
    Translation{206, ENAMETOOLONG}, // ERROR_FILENAME_EXCED_RANGE
};

constexpr std::uint32_t GeneralFailure = 31;

} // namespace

std::uint32_t windowsCode(int error)
{
    const auto *const row =
        std::find_if(Translations.begin(), Translations.end(),
                     [error](const Translation &candidate) { return candidate.error == error; });
    return row == Translations.end() ? GeneralFailure : row->windowsCode;
}

std::optional<int> errorOf(std::uint32_t windowsCode)
{
    const auto *const row = std::find_if(Translations.begin(), Translations.end(),
                                         [windowsCode](const Translation &candidate) {
                                             return candidate.windowsCode == windowsCode;
                                         });
    return row == Translations.end() ? std::nullopt : std::optional(row->error);
}

} // namespace platform
