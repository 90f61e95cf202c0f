#pragma once

#include <QString>

#include <initializer_list>

/// What the operator's hook is told of.
enum class HookEvent {
    Started,
    Found,
    Ended, ///< by itself
    Hung,  ///< it did not answer for the time after which a server counts as hung
    Restarted,
    StartFailed,
    Looping,       ///< it ends again and again
    MatchArchived, ///< the match's replay is kept
    ArchiveFailed,
    LogError
};

struct HookValue
{
    const char *key;
    QString value;
};

/// Runs the program "ZebekHook" of the game's directory, if there is one, as
///
///     ZebekHook EVENT time=2026-11-26T14:32:05 KEY=VALUE ...
///
/// EVENT is the event's name in small letters with hyphens. Control characters, which would forge
/// lines where a text is written down, are blanks, and a value has 500 characters at most.
void tellHook(HookEvent event, std::initializer_list<HookValue> values);
