#pragma once

#include "platform/ProcessEnd.h"

namespace platform {

/// Ends the process. A program with windows has no console; that the session ends reaches it as the
/// end of the application.
class WindowsProcessEnd final : public ProcessEnd
{
public:
    void end() override;
    void onRequest(std::function<void()> /*quit*/) override {}
};

} // namespace platform
