#pragma once

#include <QtGlobal>

#include <deque>
#include <optional>

/// Notices a server that ends again and again right after its start, which no restart mends and
/// which the operator is to be told, but not at every end.
class RepeatedEnds
{
public:
    /// Notes an end at a moment in milliseconds. Returns how many there were within the last 30 s
    /// when that is to be told: at the third one, and then once an hour; else 0.
    int note(qint64 moment);

private:
    std::deque<qint64> m_recent;
    std::optional<qint64> m_told;
};
