#pragma once

#include <QString>

/// The full path of one of the game's own files or folders, which are named below the game's
/// directory with "/" between them. The game does not mind the case of letters: where the exact
/// name does not exist, the first that differs in case only is taken, and where there is none of
/// that either, the name as it is.
QString fnGamePath(const QString &relativePath);
/// The same below another folder.
QString fnGamePathBelow(const QString &folder, const QString &relativePath);
