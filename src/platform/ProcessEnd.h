#pragma once

#include <functional>

namespace platform {

/// The end of this program's process.
class ProcessEnd
{
public:
    virtual ~ProcessEnd() = default;

    /// Ends the process at once with exit code 0: no destructor runs, no event is delivered.
    /// Only a test's double returns.
    virtual void end() = 0;
    /// Calls `quit` on the user-interface thread when the system asks the program to end other than
    /// by closing its window or by the end of the session: by SIGTERM, SIGINT or SIGHUP on Linux.
    virtual void onRequest(std::function<void()> quit) = 0;
};

} // namespace platform
