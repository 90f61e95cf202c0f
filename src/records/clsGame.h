#pragma once

#include "platform/XmlDocument.h"

#include <QString>

#include <optional>

/// The statistics of one match.
class clsGame
{
public:
    /// Reads the game's statistics page. A failure is recorded.
    void LoadStatsFile(const QString &path);

    /// The map's name.
    const QString &Map() const { return m_map; }
    int PlayerCount() const { return m_playerCount; }

private:
    std::optional<platform::XmlDocument> m_document;
    QString m_map;
    int m_playerCount = 0;
};
