#include "core/PercentDecoder.h"

#include "platform/CodePage.h"

#include <QStringView>

#include <iterator>
#include <utility>

namespace {

/// Escapes with the same value but other letters ("%4a", "%4A") are different texts.
constexpr char16_t Digits[] = u"0123456789abcdefABCDEF";
constexpr qsizetype DigitCount = std::size(Digits) - 1;

qsizetype digitNumber(QChar character)
{
    return QStringView(Digits).indexOf(character);
}

/// The value of a digit, given its number in the list above.
int digitValue(qsizetype number)
{
    return static_cast<int>(number < 16 ? number : number - 6);
}

} // namespace

PercentDecoder::PercentDecoder(const QString &text)
    : m_places(static_cast<std::size_t>(DigitCount * DigitCount))
{
    m_characters.reserve(static_cast<std::size_t>(text.size()));
    for (Index index = 0; index < text.size(); ++index) {
        m_characters.push_back(
            {text[index], index - 1, index + 1 < text.size() ? index + 1 : None});
    }
    for (Index index = 0; index < text.size(); ++index) {
        note(index);
    }
}

bool PercentDecoder::decode()
{
    Index position = m_characters.empty() ? None : 0;
    while (position != None) {
        if (characters(position).value != u'%') {
            position = characters(position).next;
            continue;
        }
        const Index escape = escapeAt(position);
        if (escape != None) {
            replaceAll(escape);
        } else if (!replaceShortened(position)) {
            return false;
        }
    }
    return true;
}

QString PercentDecoder::text() const
{
    QString result;
    for (Index index = m_characters.empty() ? None : 0; index != None;
         index = characters(index).next) {
        result.append(characters(index).value);
    }
    return result;
}

PercentDecoder::Index PercentDecoder::escapeAt(Index percent) const
{
    const Index first = following(percent);
    const Index second = following(first);
    if (second == None || characters(percent).value != u'%') {
        return None;
    }
    const Index high = digitNumber(characters(first).value);
    const Index low = digitNumber(characters(second).value);
    return high < 0 || low < 0 ? None : high * DigitCount + low;
}

void PercentDecoder::note(Index percent)
{
    const Index escape = percent == None ? None : escapeAt(percent);
    if (escape != None && characters(percent).noted != escape) {
        characters(percent).noted = escape;
        m_places[static_cast<std::size_t>(escape)].push_back(percent);
    }
}

void PercentDecoder::removeAfter(Index index)
{
    const Index removed = characters(index).next;
    const Index next = characters(removed).next;
    characters(index).next = next;
    if (next != None) {
        characters(next).previous = index;
    }
}

/// Replaces the places noted so far; one that comes about by that is left for a later turn.
void PercentDecoder::replaceAll(Index escape)
{
    const int code = digitValue(escape / DigitCount) * 16 + digitValue(escape % DigitCount);
    const std::vector<Index> places = std::exchange(m_places[static_cast<std::size_t>(escape)], {});
    for (const Index place : places) {
        removeAfter(place);
        removeAfter(place);
        characters(place).noted = None;
        characters(place).value = platform::fromCodePage(static_cast<std::uint8_t>(code));
    }
    for (const Index place : places) {
        // The new character may complete an escape as any of its three characters.
        note(place);
        const Index before = characters(place).previous;
        note(before);
        note(before == None ? None : characters(before).previous);
    }
}

/// At the end of the text an escape may be one digit short.
bool PercentDecoder::replaceShortened(Index percent)
{
    const Index only = following(percent);
    if (only == None || characters(only).next != None) {
        return false;
    }
    const Index digit = digitNumber(characters(only).value);
    if (digit < 0) {
        return false;
    }
    removeAfter(percent);
    characters(percent).value =
        platform::fromCodePage(static_cast<std::uint8_t>(digitValue(digit)));
    return true;
}
