#include "platform/windows/WindowsProcessEnd.h"

#include <cstdlib>

namespace platform {

void WindowsProcessEnd::end()
{
    std::_Exit(EXIT_SUCCESS);
}

} // namespace platform
