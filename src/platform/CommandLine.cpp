#include "platform/CommandLine.h"

namespace platform {

namespace {

bool isBlank(QChar character)
{
    return character == u' ' || character == u'\t';
}

class Splitter
{
public:
    explicit Splitter(QStringView text) : m_text(text) {}

    QStringList split()
    {
        QStringList result{takeProgram()};
        for (skipBlanks(); !atEnd(); skipBlanks()) {
            result.append(takeArgument());
        }
        return result;
    }

private:
    bool atEnd() const { return m_position >= m_text.size(); }
    bool at(char16_t character) const { return !atEnd() && m_text[m_position] == character; }

    void skipBlanks()
    {
        while (!atEnd() && isBlank(m_text[m_position])) {
            ++m_position;
        }
    }

    /// Backslashes are ordinary here. Two quotes within quotes are one, for names outside Windows.
    QString takeProgram()
    {
        QString program;
        bool quoted = false;
        for (; !atEnd() && (quoted || !isBlank(m_text[m_position])); ++m_position) {
            const bool quote = at(u'"');
            if (quote && quoted && m_position + 1 < m_text.size() &&
                m_text[m_position + 1] == u'"') {
                program.append(m_text[++m_position]);
            } else if (quote) {
                quoted = !quoted;
            } else {
                program.append(m_text[m_position]);
            }
        }
        return program;
    }

    QString takeArgument()
    {
        QString argument;
        bool quoted = false;
        while (!atEnd() && (quoted || !isBlank(m_text[m_position]))) {
            const bool literalQuote = takeBackslashes(argument);
            if (!at(u'"')) {
                // A character after backslashes is looked at again, for it may be a blank.
                if (!atEnd() && (quoted || !isBlank(m_text[m_position]))) {
                    argument.append(m_text[m_position++]);
                }
                continue;
            }
            ++m_position;
            if (literalQuote) {
                argument.append(u'"');
            } else if (quoted && at(u'"')) {
                argument.append(u'"');
                ++m_position;
            } else {
                quoted = !quoted;
            }
        }
        return argument;
    }

    /// Appends a run of backslashes, halved before a quote; true when that quote is a character.
    bool takeBackslashes(QString &argument)
    {
        qsizetype count = 0;
        for (; at(u'\\'); ++m_position) {
            ++count;
        }
        const bool beforeQuote = at(u'"');
        argument.append(QString(beforeQuote ? count / 2 : count, u'\\'));
        return beforeQuote && count % 2 != 0;
    }

    QStringView m_text;
    qsizetype m_position = 0;
};

} // namespace

QStringList splitCommandLine(const QString &commandLine)
{
    return Splitter(commandLine).split();
}

} // namespace platform
