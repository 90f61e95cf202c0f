#include "platform/SystemMessage.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace platform {

namespace {

struct Translation
{
    std::uint32_t windowsCode;
    int error;
};

/// The Windows codes that this system has a counterpart of.
constexpr std::array Translations{
    Translation{2, ENOENT},   // ERROR_FILE_NOT_FOUND
    Translation{3, ENOENT},   // ERROR_PATH_NOT_FOUND
    Translation{4, EMFILE},   // ERROR_TOO_MANY_OPEN_FILES
    Translation{5, EACCES},   // ERROR_ACCESS_DENIED
    Translation{8, ENOMEM},   // ERROR_NOT_ENOUGH_MEMORY
    Translation{19, EROFS},   // ERROR_WRITE_PROTECT
    Translation{29, EIO},     // ERROR_WRITE_FAULT
    Translation{32, EBUSY},   // ERROR_SHARING_VIOLATION
    Translation{87, EINVAL},  // ERROR_INVALID_PARAMETER
    Translation{112, ENOSPC}, // ERROR_DISK_FULL
};

} // namespace

QString systemMessage(std::uint32_t code)
{
    const auto *const found =
        std::find_if(Translations.begin(), Translations.end(),
                     [code](const Translation &row) { return row.windowsCode == code; });
    if (found == Translations.end()) {
        return {};
    }
    return QString::fromStdString(std::generic_category().message(found->error));
}

} // namespace platform
