#pragma once

#include <QString>

#include <cstdint>

namespace platform {

/// The machine-wide entry that starts the tool whenever a user logs on: on Windows the value
/// "ZEBEK.EXE" under the machine's Run key, elsewhere the desktop's counterpart, which may be for
/// this user alone. Results are Windows error codes: 0 for success, 2 for no such entry, 5 for no
/// permission.
class Autostart
{
public:
    static constexpr std::uint32_t Success = 0;
    static constexpr std::uint32_t NotFound = 2;

    virtual ~Autostart() = default;

    /// Success when there is an entry, whatever it says. Needs no right to change it.
    virtual std::uint32_t query() = 0;
    /// Makes or replaces the entry; `program` is the full path of the program to start.
    virtual std::uint32_t write(const QString &program) = 0;
    virtual std::uint32_t remove() = 0;
    /// For whom and where the entry is, or would be made: a sentence for people.
    virtual QString place() = 0;
};

} // namespace platform
