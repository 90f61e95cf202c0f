#pragma once

#include "platform/XmlDocument.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// The statistics of one match.
class clsGame
{
public:
    /// Takes the game's statistics page, which was read from the path. A failure is recorded.
    void LoadStatsFile(const QString &path, const QByteArray &page);

    /// The map's name.
    const QString &Map() const { return m_map; }
    int PlayerCount() const { return static_cast<int>(m_players.size()); }
    const QStringList &PlayerNames() const { return m_players; }

private:
    std::optional<platform::XmlDocument> m_document;
    QString m_map;
    QStringList m_players;
};
