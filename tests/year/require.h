#pragma once

#include <QString>

#include <stdexcept>

/// Throws where something is that must never be.
inline void require(bool condition, const char *otherwise, const QString &details = {})
{
    if (!condition) {
        throw std::runtime_error(otherwise + details.toStdString());
    }
}
