#pragma once

#include <QString>

namespace platform {

/// Writes a line to the standard error, if somebody takes it at once: a reader that stopped must
/// not stop this program. Of a long text the beginning is written.
void tellOnStandardError(const QString &text);

} // namespace platform
