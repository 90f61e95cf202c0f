#pragma once

#include "platform/Failure.h"

#include <QStringList>

#include <functional>

namespace platform {

/// Runs the operator's own program, which is told of what happens. Nothing waits for it.
class Hooks
{
public:
    using Failed = std::function<void(const Failure &)>;

    virtual ~Hooks() = default;
    /// Runs the program "ZebekHook" of the directory, in it, with these arguments; nothing where
    /// there is none. Each argument reaches it as one, whatever it holds. `failed` is called, be it
    /// later, where it cannot be run or does not end in time.
    virtual void run(const QString &directory, const QStringList &arguments, Failed failed) = 0;
};

} // namespace platform
