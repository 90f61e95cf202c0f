#pragma once

#include <QString>

#include <vector>

/// Decodes percent escapes as repeated replacement does: again and again the first "%" of the text
/// and the two characters after it are the escape, and every place where exactly that escape
/// stands becomes its character. Replacing text literally takes quadratic time on "%252525...", so
/// the characters are kept in a linked list, with the places of every escape in a list of its own.
class PercentDecoder
{
public:
    explicit PercentDecoder(const QString &text);

    /// Decodes until no "%" is left. False when what follows a "%" is not hexadecimal; the text is
    /// then as far decoded as it was by then.
    bool decode();
    QString text() const;

private:
    using Index = qsizetype;
    static constexpr Index None = -1;

    struct Character
    {
        QChar value;
        Index previous = None;
        Index next = None;
        Index noted = None; ///< the escape that is listed as beginning here
    };

    /// The number of an escape among all; None for a character that does not begin one.
    Index escapeAt(Index percent) const;
    Index following(Index index) const { return index == None ? None : characters(index).next; }
    const Character &characters(Index index) const
    {
        return m_characters[static_cast<std::size_t>(index)];
    }
    Character &characters(Index index) { return m_characters[static_cast<std::size_t>(index)]; }

    void note(Index percent);
    void removeAfter(Index index);
    void replaceAll(Index escape);
    bool replaceShortened(Index percent);

    std::vector<Character> m_characters;
    /// Where each escape stands, in no order.
    std::vector<std::vector<Index>> m_places;
};
