#include "StatusReply.h"

#include "PseudoRandom.h"
#include "Windows1252.h"

#include <QtEndian>

#include <bit>

namespace {

constexpr qsizetype HeaderSize = 25;
constexpr qsizetype LongestString = 254;
constexpr qsizetype ShortSize = 10;
constexpr qsizetype HugeSize = 2000;
constexpr quint32 HugeSeed = 2348;

class Writer
{
public:
    void header() { m_bytes += statusRequest().left(4).leftJustified(HeaderSize, '\0'); }
    void zeros(qsizetype count) { m_bytes.append(count, '\0'); }
    void byte(quint8 value) { m_bytes.append(static_cast<char>(value)); }

    void number(quint32 value)
    {
        const quint32 little = qToLittleEndian(value);
        m_bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
    }

    void real(double value) { number(std::bit_cast<quint32>(static_cast<float>(value))); }

    void text(const QString &value)
    {
        const QByteArray characters = toWindows1252(value).left(LongestString);
        number(static_cast<quint32>(characters.size() + 1));
        m_bytes += characters;
        byte(0);
    }

    qsizetype size() const { return m_bytes.size(); }
    QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

void writePlayers(Writer &writer, const ServerStatus &status)
{
    writer.number(static_cast<quint32>(status.maximumPlayers));
    writer.number(static_cast<quint32>(status.players.size()));
    for (const QString &player : status.players) {
        writer.text(player);
    }
}

} // namespace

QByteArray statusRequest()
{
    return QByteArray::fromHex("C0DEF111420600F50300000000");
}

QByteArray statusReply(const ServerStatus &status, ReplyShape shape)
{
    if (shape == ReplyShape::Huge) {
        return PseudoRandom(HugeSeed).bytes(HugeSize);
    }
    Writer writer;
    writer.header();
    writer.text(status.serverName);
    const qsizetype mapStart = writer.size();
    writer.text(status.map);
    if (shape == ReplyShape::Truncated) {
        return writer.bytes().left(mapStart + 4 + (writer.size() - mapStart - 4) / 2);
    }
    writer.text(status.mission);
    writer.text(status.gameType);
    writer.zeros(2);
    writePlayers(writer, status);
    writer.zeros(17);
    writer.text(status.version);
    writer.text(status.mods);
    writer.byte(status.dedicated ? 1 : 0);
    writer.real(status.elapsedSeconds);
    writer.number(static_cast<quint32>(status.matchState));
    writer.zeros(4);
    writer.text(status.messageOfTheDay);
    writer.zeros(4);
    writer.real(status.matchLengthSeconds);
    return shape == ReplyShape::Short ? writer.bytes().left(ShortSize) : writer.bytes();
}
