#include "ui/messages.h"

#include "core/basMain.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"

void showMessage(const QString &text, const QString &title)
{
    gRoot->Machine().messageBoxes.show(text, title, platform::OkOnly);
}
