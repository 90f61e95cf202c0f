#include "server/clsModInfo.h"

#include "core/basGamePath.h"
#include "core/basTraps.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Takes the items of a comma-delimited text one by one: an item ends at a comma or a line's end,
/// blanks before it do not count, and one that begins with a quote runs to the next quote.
class ItemReader
{
public:
    explicit ItemReader(QString text) : m_text(std::move(text)) {}

    /// Nothing at the end of the text.
    std::optional<QString> next()
    {
        while (at(u' ')) {
            ++m_position;
        }
        if (m_position >= m_text.size()) {
            return std::nullopt;
        }
        QString item;
        if (at(u'"')) {
            ++m_position;
            item = takeUntil([this] { return at(u'"'); });
            takeUntil([this] { return atDelimiter(); }); // what follows the quote does not count
        } else {
            item = takeUntil([this] { return atDelimiter(); });
        }
        skipDelimiter();
        return item;
    }

private:
    bool at(char16_t character) const
    {
        return m_position < m_text.size() && m_text[m_position] == character;
    }
    bool atDelimiter() const { return at(u',') || at(u'\r') || at(u'\n'); }

    template <typename Condition>
    QString takeUntil(Condition atEnd)
    {
        const qsizetype start = m_position;
        while (m_position < m_text.size() && !atEnd()) {
            ++m_position;
        }
        return m_text.mid(start, m_position - start);
    }

    void skipDelimiter()
    {
        const bool lineEnd = at(u'\r');
        ++m_position;
        if (lineEnd && at(u'\n')) {
            ++m_position;
        }
    }

    QString m_text;
    qsizetype m_position = 0;
};

} // namespace

void clsModInfo::setModPath(const QString &path)
{
    constexpr qint64 Enough = 1 << 20; // for two items; the file may be any
    QByteArray content;
    skipFailure(
        [&] { content = platform::readFile(fnGamePathBelow(path, u"ModsCont.txt"_s), Enough); });
    ItemReader items(platform::fromCodePage(content));
    const QString first = items.next().value_or(QString());
    const QString item = items.next().value_or(first);
    const qsizetype opening = item.indexOf(u'"');
    const qsizetype closing = opening < 0 ? -1 : item.indexOf(u'"', opening + 1);
    if (closing >= 0) {
        m_name = item.mid(opening + 1, closing - opening - 1);
    }
}

QString clsModInfo::shownName() const
{
    return m_name.isEmpty() ? ModName.section(u'\\', -1) : m_name;
}
