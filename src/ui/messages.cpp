#include "ui/messages.h"

#include "core/basMain.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"
#include "platform/SystemServices.h"

using namespace Qt::StringLiterals;

void showMessage(const QString &text, const QString &title)
{
    gRoot->Machine().messageBoxes.show(text, title, platform::OkOnly);
}

void openOrTell(const QString &kind, const QString &path, const QString &title)
{
    if (!platform::openOnDesktop(path)) {
        showMessage(u"No program was found that shows the %1 \"%2\""_s.arg(kind, path), title);
    }
}
