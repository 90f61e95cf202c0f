#pragma once

#include "core/WebServerProblem.h"

#include <QString>

/// What the settings' panels and pages ask of the global form: how the web server fares.
class iGlobalForm
{
public:
    iGlobalForm() = default;
    iGlobalForm(const iGlobalForm &) = delete;
    iGlobalForm &operator=(const iGlobalForm &) = delete;
    virtual ~iGlobalForm() = default;

    /// The address under which this machine is reached, to show it.
    virtual QString DefaultLocalIP() const = 0;
    virtual bool WebServerRunning() const = 0;
    /// Why it does not, where somebody has tried to start it.
    virtual WebServerProblem webServerProblem() const = 0;
    /// Open connections are left to finish.
    virtual void StopWebServer() = 0;
    /// Nothing when it runs already, and without a user name, a password or a port. What fails, now
    /// or later, is tried again every 3 s until it is stopped.
    virtual void StartWebServer() = 0;
};
