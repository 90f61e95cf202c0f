#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class clsWebServerRequest;

/// The archived replays as the web site shows, sends and deletes them.

/// The names of the files "*.rpf" in the replay folder, as the system lists them.
QStringList fnReplayFiles();

/// The path of an existing file in the replay folder. Nothing for a name that means any other
/// place, on this system or another: one with a separator, a drive, "..", a wildcard or a control
/// character, a device's name, or a link that leads out of the folder.
std::optional<QString> fnReplayPath(const QString &name);

/// Deletes the file of a name with ".rpf" in it, if there is one. False for another name, and when
/// it failed, which is recorded.
bool RemoveReplay(const QString &name);

/// Deletes the files named by the fields "DELFILE" and the file's name; the result tells how many.
QString DeleteReplays(const clsWebServerRequest &request);
