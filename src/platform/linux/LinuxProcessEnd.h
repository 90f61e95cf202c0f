#pragma once

#include "platform/ProcessEnd.h"

#include <QSocketNotifier>

#include <memory>

namespace platform {

/// Ends the process; SIGTERM, SIGINT and SIGHUP reach the event loop through an event descriptor.
/// The signals are caught, not blocked: a blocked signal would stay so in every program that we
/// start.
class LinuxProcessEnd final : public ProcessEnd
{
public:
    void end() override;
    void onRequest(std::function<void()> quit) override;

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace platform
