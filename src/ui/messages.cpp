#include "ui/messages.h"

#include "core/basMain.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"

using namespace Qt::StringLiterals;

void showMessage(const QString &text)
{
    gRoot->Machine().messageBoxes.show(text, u"Zebek Suite"_s, platform::OkOnly);
}
