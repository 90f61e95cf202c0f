#pragma once

#include <QString>

namespace platform {

/// Lets lines break within the paths and the long words of a text: a control that wraps at blanks
/// only would become as wide as they are. What breaks them is without a width, and is dropped again
/// from what this program copies to the clipboard.
QString breakable(QString text);

} // namespace platform
