#pragma once

#include <QByteArray>
#include <QString>

/// The single-byte text of the game's files and datagrams. Qt has no codec for it on every
/// system, hence a table of our own. The five bytes without a character stand for the code
/// point of the same value.
QByteArray toWindows1252(const QString &text);   ///< what has no byte becomes "?"
QString fromWindows1252(const QByteArray &text); ///< every byte is one character
