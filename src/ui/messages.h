#pragma once

#include <QString>

/// Tells the operator something that he did, in a box with one OK button.
void showMessage(const QString &text, const QString &title = QStringLiteral("Zebek Suite"));

/// Opens a file or folder in the desktop's program for it, or tells that there is none. `kind` is
/// the word for it.
void openOrTell(const QString &kind, const QString &path, const QString &title);
