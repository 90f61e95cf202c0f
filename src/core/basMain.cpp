#include "core/basMain.h"

#include "core/clsZebek.h"
#include "platform/Machine.h"

using namespace Qt::StringLiterals;

clsZebek *gRoot = nullptr;

int ShowErrorMessage(const QString &Module, const QString &Routine, const QString &ID, int ErrorNo,
                     const QString &Description, int Buttons)
{
    const QString text = u"An error has occured in %1 of %2 (%3):\r\n\r\n    %4 : %5"_s.arg(
        Routine, Module, ID, QString::number(ErrorNo), Description);
    return gRoot->Machine().messageBoxes.show(text, u"Do'h!!"_s, Buttons + platform::StopIcon);
}
