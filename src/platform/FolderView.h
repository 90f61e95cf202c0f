#pragma once

#include <QString>

namespace platform {

/// Shows a folder in the desktop's file manager, without waiting for it. False where there is none.
bool showFolder(const QString &folder);

} // namespace platform
