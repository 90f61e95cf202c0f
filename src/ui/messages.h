#pragma once

#include <QString>

/// Tells the operator something that he did, in a box with one OK button.
void showMessage(const QString &text, const QString &title = QStringLiteral("Zebek Suite"));
