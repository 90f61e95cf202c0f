#include "server/RepeatedEnds.h"

int RepeatedEnds::note(qint64 moment)
{
    constexpr qint64 Recent = 30000;
    constexpr qint64 Hour = 3600000;
    constexpr std::size_t TooMany = 3;
    m_recent.push_back(moment);
    while (moment - m_recent.front() > Recent) {
        m_recent.pop_front();
    }
    if (m_recent.size() < TooMany || (m_told && moment - *m_told < Hour)) {
        return 0;
    }
    m_told = moment;
    return static_cast<int>(m_recent.size());
}
