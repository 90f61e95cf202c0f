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

/// The address of a replay's download: "GETFILE", the administrator's password, "/" and the file's
/// name, both percent-encoded, so that every character gets there.
QString fnDownloadLink(const QString &name);

/// The name in such an address without its first word, where the password may also stand as it is.
/// Nothing with another password, or while none is stored. Escapes are those of UTF-8, as browsers
/// send them, or else of the code page. Unlike a form's values the name is decoded once only, since
/// a "%" may be a character of it.
std::optional<QString> fnDownloadName(const QString &address);

/// Deletes the file of a name with ".rpf" in it, if there is one. False for another name, and when
/// it failed, which is recorded.
bool RemoveReplay(const QString &name);

/// Deletes the files named by the fields "DELFILE" and the file's name; the result tells how many.
QString DeleteReplays(const clsWebServerRequest &request);
