#include "platform/CommandLine.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// An argument as a command line has to have it.
static QString quoted(const QString &argument)
{
    QString result = QStringLiteral("\"");
    qsizetype backslashes = 0;
    for (const QChar character : argument) {
        if (character == u'"') {
            result.append(QString(backslashes + 1, u'\\'));
        }
        backslashes = character == u'\\' ? backslashes + 1 : 0;
        result.append(character);
    }
    return result + QString(backslashes, u'\\') + u'"';
}

/// Lines of any content: the arguments come out again where they are quoted, and a line without
/// quotes is cut at its blanks.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text =
        QString::fromLatin1(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QStringList arguments = text.split(u'\n');
    QString line = QStringLiteral("program");
    for (const QString &argument : arguments) {
        line += u' ' + quoted(argument);
    }
    if (platform::splitCommandLine(line).mid(1) != arguments) {
        std::abort();
    }
    const QStringList split = platform::splitCommandLine(text);
    QString blanks = text;
    blanks.replace(u'\t', u' ');
    if (!text.contains(u'"') && !text.startsWith(u' ') && !text.startsWith(u'\t') &&
        split.mid(1) != blanks.split(u' ', Qt::SkipEmptyParts).mid(1)) {
        std::abort();
    }
    return 0;
}
