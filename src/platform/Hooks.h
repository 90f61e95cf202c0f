#pragma once

#include "platform/Failure.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace platform {

/// Runs the operator's own program, which is told of what happens. Nothing waits for it.
class Hooks
{
public:
    /// Nothing where the hook ran to its end, whatever its exit code; else why not.
    using Done = std::function<void(const std::optional<Failure> &)>;

    virtual ~Hooks() = default;
    /// Runs the program "ZebekHook" of the directory, in it, with these arguments; nothing where
    /// there is none. Each argument reaches it as one, whatever it holds. `done` is called once,
    /// mostly later.
    virtual void run(const QString &directory, const QStringList &arguments, Done done) = 0;
};

} // namespace platform
