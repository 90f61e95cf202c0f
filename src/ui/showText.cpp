#include "ui/showText.h"

#include <QLineEdit>

void showText(QLineEdit &box, const QString &text)
{
    if (box.text() != text) {
        box.setText(text);
    } else if (box.hasFocus()) {
        return; // somebody is writing it
    }
    box.setCursorPosition(0);
}
