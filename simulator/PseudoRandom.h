#pragma once

#include <QByteArray>

/// A small pseudo random sequence (xorshift, 32 bits). The same seed gives the same numbers on
/// every system and with every library, so that a demo and a test see the same matches.
class PseudoRandom
{
public:
    explicit PseudoRandom(quint32 seed) : m_state(seed * 2654435761U + 1U)
    {
        if (m_state == 0) {
            m_state = 1; // the sequence cannot leave 0
        }
    }

    quint32 next()
    {
        m_state ^= m_state << 13U;
        m_state ^= m_state >> 17U;
        m_state ^= m_state << 5U;
        return m_state;
    }

    /// A number from 0 to limit - 1; limit is at least 1.
    int below(int limit) { return static_cast<int>(next() % static_cast<quint32>(limit)); }

    QByteArray bytes(qsizetype count)
    {
        QByteArray result(count, '\0');
        for (char &byte : result) {
            byte = static_cast<char>(next() >> 24U);
        }
        return result;
    }

private:
    quint32 m_state;
};
