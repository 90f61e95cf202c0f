#include "server/ServerStatusReply.h"

#include "core/basNumbers.h"

#include <QtEndian>

#include <bit>

using namespace Qt::StringLiterals;

namespace {

/// Reads a datagram from front to back; beyond its end there are only empty texts and zeros.
class PacketReader
{
public:
    explicit PacketReader(const QByteArray &bytes, qsizetype position)
        : m_bytes(bytes), m_position(position)
    {
    }

    void skip(qsizetype count) { m_position += count; }

    std::uint8_t readByte(qsizetype width = 1)
    {
        const std::uint8_t result = byteAt(m_position);
        skip(width);
        return result;
    }

    QString ReadPacketString()
    {
        const qsizetype length = readByte(LengthWidth);
        const qsizetype start = m_position;
        skip(length);
        if (m_position > m_bytes.size()) {
            return {};
        }
        const QByteArrayView text = QByteArrayView(m_bytes).sliced(start, length);
        const qsizetype end = text.indexOf('\0');
        return end < 0 ? QString() : QString::fromLatin1(text.first(end));
    }

    std::int32_t ReadPacketSingle()
    {
        std::uint32_t bits = 0;
        if (m_position + SingleWidth <= m_bytes.size()) {
            bits = qFromLittleEndian<std::uint32_t>(m_bytes.constData() + m_position);
        }
        skip(SingleWidth);
        constexpr std::uint32_t WithoutSign = 0x7FFFFFFF;
        return fnRound(std::bit_cast<float>(bits & WithoutSign)).value_or(0);
    }

private:
    static constexpr qsizetype LengthWidth = 4;
    static constexpr qsizetype SingleWidth = sizeof(float);

    std::uint8_t byteAt(qsizetype position) const
    {
        return position < m_bytes.size() ? static_cast<std::uint8_t>(m_bytes[position]) : 0;
    }

    const QByteArray &m_bytes;
    qsizetype m_position;
};

QString matchStateText(std::uint8_t state)
{
    switch (state) {
    case 3:
        return u"Joining"_s;
    case 4:
        return u"Playing"_s;
    default:
        return u"Unknown"_s;
    }
}

} // namespace

ServerStatusReply ServerStatusReply::parse(const QByteArray &datagram)
{
    ServerStatusReply reply;
    PacketReader reader(datagram, MinimumSize);
    reply.name = reader.ReadPacketString();
    reply.map = reader.ReadPacketString();
    reply.mission = reader.ReadPacketString();
    reply.gameType = reader.ReadPacketString();
    reader.skip(2);
    reply.maximumPlayers = reader.readByte(4);
    reply.playerCount = reader.readByte(4);
    for (std::int32_t position = 1; position <= reply.playerCount; ++position) {
        reply.players.push_back({u"R%1"_s.arg(position), reader.ReadPacketString()});
    }
    reader.skip(17);
    reply.version = reader.ReadPacketString();
    reply.mods = reader.ReadPacketString();
    reply.dedicated = reader.readByte() != 0;
    if (reply.dedicated && !reply.players.empty()) {
        reply.players.erase(reply.players.begin());
    }
    reply.elapsedSeconds = reader.ReadPacketSingle();
    reply.matchState = matchStateText(reader.readByte(4));
    reader.skip(4);
    reply.motd = reader.ReadPacketString();
    reader.skip(4);
    reply.matchLength = reader.ReadPacketSingle();
    return reply;
}
