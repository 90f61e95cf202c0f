#pragma once

namespace platform {

/// Lets another program bring its window to the front, which Windows allows only to the one that
/// the user has started last.
void letOthersComeToFront();

} // namespace platform
