#pragma once

#include <QString>

#include <cstdint>

/// Why the web server does not run although somebody wanted it to.
struct WebServerProblem
{
    enum class Kind {
        None,
        NoLogIn,    ///< there is no user name or no password
        NoPort,     ///< a port is a number from 1 on, up to 65535
        PortTaken,  ///< by another program
        NotAllowed, ///< this user may not have the port
        Other       ///< what the system says, and no more is known
    };

    Kind kind = Kind::None;
    std::int32_t port = 0;
    QString system = {}; ///< the system's text, where it was asked
};
