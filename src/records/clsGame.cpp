#include "records/clsGame.h"

#include "core/basTraps.h"
#include "records/basParse.h"

void clsGame::LoadStatsFile(const QString &path, const QByteArray &page)
{
    trap({"clsGame", "LoadStatsFile", "Unknown"}, [&] {
        m_document = xmlFromGamePage(page, path);
        const auto game = m_document->findFirst("Game");
        m_map = game ? game->attribute("Map") : QString();
        m_players.clear();
        for (const platform::XmlElement &player : m_document->findAll("Player")) {
            m_players.append(player.attribute("Name"));
        }
    });
}
