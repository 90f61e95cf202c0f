#pragma once

class QLineEdit;
class QString;

/// Lets a box show a text, of one that is longer than the box the beginning.
void showText(QLineEdit &box, const QString &text);
