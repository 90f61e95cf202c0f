#include "core/clsErrors.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/Failure.h"
#include "platform/Machine.h"
#include "platform/XmlDocument.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int MinuteMilliseconds = 60000;
constexpr int MostOfStrangers = 60;
constexpr int MostOfStrangersADay = 1000; // or they fill a disk within months

} // namespace

clsErrors::clsErrors()
    : m_file(gRoot->RootDirectory() + u"ZEBEK_Error.xml"_s),
      tmrMinute(gRoot->Machine().clock, [this] { tmrMinute_Timer(); })
{
}

void clsErrors::RecordError(const QString &Module, const QString &Routine, const QString &ID,
                            int ErrorNo, const QString &Description) noexcept
{
    try {
        const QString time = gRoot->Machine().clock.now().toString(u"yyyy-MM-dd HH:mm:ss"_s);
        platform::XmlDocument document = platform::XmlDocument::create("Error");
        platform::XmlElement record = document.root();
        record.setText(Description);
        const std::array<std::pair<const char *, QString>, 5> attributes{{
            {"DateTime", time},
            {"Module", Module},
            {"Routine", Routine},
            {"ID", ID},
            {"ErrorNo", QString::number(ErrorNo)},
        }};
        for (const auto &[name, value] : attributes) {
            record.setAttribute(name, value);
        }
        m_file.append(record.toBytes());
    } catch (const std::exception &) { // NOLINT(bugprone-empty-catch)
        // There is nobody left to tell; the record waits for the next save.
    }
}

int clsErrors::count()
{
    skipFailure([this] { m_count = m_file.recordCount(); });
    return m_count;
}

bool clsErrors::admitsOneOfStrangers()
{
    if (m_byStrangers == 0 && m_leftOut == 0) {
        tmrMinute.setInterval(MinuteMilliseconds);
    }
    const QDate today = gRoot->Machine().clock.now().date();
    if (std::exchange(m_day, today) != today) {
        m_thatDay = 0;
    }
    if (m_byStrangers >= MostOfStrangers || m_thatDay >= MostOfStrangersADay) {
        ++m_leftOut;
        return false;
    }
    ++m_byStrangers;
    ++m_thatDay;
    return true;
}

void clsErrors::tmrMinute_Timer()
{
    tmrMinute.setInterval(0);
    m_byStrangers = 0;
    if (const int leftOut = std::exchange(m_leftOut, 0); leftOut > 0) {
        recordFailure(
            {"Error Log", "tmrMinute_Timer", "None", /*byStrangers=*/false, /*event=*/{}},
            {platform::Failure::Overflow,
             u"%1 more failures that requests caused within this minute were left out"_s.arg(
                 leftOut)});
    }
}

bool clsErrors::admitsEventOf(const QString &routine)
{
    const qint64 now = gRoot->Machine().clock.milliseconds();
    const auto last = m_told.constFind(routine);
    if (last != m_told.cend() && now - *last < MinuteMilliseconds) {
        return false;
    }
    m_told.insert(routine, now);
    return true;
}

bool clsErrors::isNewReason(const QString &routine, const QString &reason)
{
    QSet<QString> &known = m_reasons[routine];
    const bool isNew = !known.contains(reason);
    known.insert(reason);
    return isNew;
}
