#include "ui/messages.h"

#include "core/basMain.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"

void showMessage(const QString &text)
{
    gRoot->Machine().messageBoxes.show(text, QStringLiteral("Zebek Suite"), platform::OkOnly);
}
