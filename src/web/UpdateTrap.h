#pragma once

#include "core/basTraps.h"

#include <QString>

/// What the page of an update tells after a failure.
inline const QString UpdateFailed = QStringLiteral("An Error has occured. Please check the log");

/// Runs the body of an update, which returns what its page tells; a failure is recorded and told.
template <typename Body>
QString trapUpdate(const char *routine, Body body)
{
    QString message = UpdateFailed;
    Trap(Routine{"Website", routine, "Root Object"}, [&] { message = body(); });
    return message;
}
