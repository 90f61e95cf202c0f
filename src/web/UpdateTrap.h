#pragma once

#include "core/basTraps.h"

#include <QString>

/// Runs the body of an update, which returns what its page tells; a failure is recorded and told.
template <typename Body>
QString trapUpdate(const char *routine, Body body)
{
    QString message = QStringLiteral("An Error has occured. Please check the log");
    Trap(Routine{"Website", routine, "Root Object"}, [&] { message = body(); });
    return message;
}
