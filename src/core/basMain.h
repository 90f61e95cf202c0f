#pragma once

#include <QString>

class clsZebek;

/// The one root object, through which everybody reaches the shared services. Set by the program
/// entry before it calls Start.
extern clsZebek *gRoot;

/// Shows the operator a failure in a critical message box.
/// `Buttons` is the button set of a platform::MessageBoxStyle (0 OK, 5 Retry and Cancel); the
/// result is the code of the button pressed (platform::MessageBoxButton).
int ShowErrorMessage(const QString &Module, const QString &Routine, const QString &ID, int ErrorNo,
                     const QString &Description, int Buttons);
