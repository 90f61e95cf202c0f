#pragma once

#include <QString>

class clsWebServerRequest;

/// The forms that the administration's pages post. Each stores what its form says and returns what
/// the page then tells. A failure is recorded, and the page says so.

QString Update_ReplayConfig(const clsWebServerRequest &request);
QString Update_ServerControlConfig(const clsWebServerRequest &request);
QString Update_StatusOptionsConfig(const clsWebServerRequest &request);
QString Update_SystemOptionsConfig(const clsWebServerRequest &request);

/// The game's files may be changed only while no game server is held: it rewrites them.
QString Update_ServerOptionsConfig(const clsWebServerRequest &request);
/// One button of the list of mods. Empty when it has done its work.
QString Update_ModList(const clsWebServerRequest &request);
