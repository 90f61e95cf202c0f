#pragma once

#include <QByteArray>
#include <QString>

/// Text for the system's calls that take bytes of the ANSI code page. The program's manifest asks
/// for UTF-8 as that code page; an older system, which does not know the wish, keeps its own.
namespace platform {

inline QByteArray toAnsi(const QString &text)
{
    return text.toLocal8Bit();
}

inline QString fromAnsi(const char *text, qsizetype length)
{
    return QString::fromLocal8Bit(text, length);
}

} // namespace platform
