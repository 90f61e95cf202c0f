#pragma once

#include "platform/Failure.h"

#include <QByteArray>

namespace platform {

/// The steps of Files::replaceEnd(), the same on every system. Of its own a system has the file's
/// operations reserve(position, length), resize(size) and write(content, position).
template <typename OpenFile>
void replaceEnd(const OpenFile &file, qint64 position, const QByteArray &old,
                const QByteArray &content)
{
    if (content.size() > old.size()) {
        file.reserve(position, content.size());
    } else {
        file.resize(position); // so that nothing of the old end comes to stand behind the new one
    }
    try {
        file.write(content, position);
    } catch (const Failure &) {
        file.resize(position + old.size());
        file.write(old, position);
        throw;
    }
}

} // namespace platform
