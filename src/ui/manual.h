#pragma once

/// Opens the operator's manual, as the release has it, in the desktop's browser, or tells where it
/// is looked for: the folder "ZebekManual" in the game's directory, and where the Debian package
/// puts it.
void openManual();
