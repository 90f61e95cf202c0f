#pragma once

#include <QByteArray>
#include <QString>

#include <windows.h>

/// Text for the system's calls that take bytes of the ANSI code page. The program's manifest asks
/// for UTF-8 as that code page; an older system, which does not know the wish, keeps its own.
namespace platform {

// Qt's own conversion asks the system for what it does not do where the code page is UTF-8.

inline QByteArray toAnsi(const QString &text)
{
    return GetACP() == CP_UTF8 ? text.toUtf8() : text.toLocal8Bit();
}

inline QString fromAnsi(const char *text, qsizetype length)
{
    return GetACP() == CP_UTF8 ? QString::fromUtf8(text, length)
                               : QString::fromLocal8Bit(text, length);
}

/// Whether the code page has all characters of the text; the others would be replaced.
inline bool isAnsi(const QString &text)
{
    const QByteArray bytes = toAnsi(text);
    return fromAnsi(bytes.constData(), bytes.size()) == text;
}

} // namespace platform
