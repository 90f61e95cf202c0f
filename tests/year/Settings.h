#pragma once

#include "core/clsOptions.h"

#include <algorithm>
#include <array>
#include <variant>
#include <vector>

/// The settings that a year changes, as numbers.
enum SettingIndex {
    Polling, ///< milliseconds
    Startup, ///< seconds
    Timeout, ///< seconds
    ReplayCount,
    RestartHung,
    RestartEnded,
    AutoStart,
    Find,
    Record,
    SkipBlank,
    SettingCount,
    IntervalCount = ReplayCount ///< the first ones
};

using Settings = std::array<int, SettingCount>;

inline const struct SettingRow
{
    std::variant<Setting<std::int32_t> clsOptions::*, Setting<bool> clsOptions::*> member;
    std::vector<int> values; ///< the first is the usual one

    int of(const clsOptions &options) const
    {
        return std::visit([&](auto setting) { return int{(options.*setting)()}; }, member);
    }
    void let(clsOptions &options, int value) const
    {
        std::visit([&](auto setting) { (options.*setting).Let(value); }, member);
    }
} SettingTable[] = {
    {&clsOptions::ServerPollingFrequency, {3000, 250, 1000, 5000, 7000, 20000}},
    {&clsOptions::ServerStartupTimeout, {30, 8, 10, 60}},
    {&clsOptions::ServerTimeout, {30, 1, 5, 10, 64}},
    {&clsOptions::ReplayCount, {8, 1, 3, 5}},
    {&clsOptions::AutoRestartGRServer, {1, 1, 1, 0}},
    {&clsOptions::AutoRestartOnProcessStop, {1, 1, 0}},
    {&clsOptions::AutoStartGRServer, {1, 1, 0}},
    {&clsOptions::FindGRServer, {1, 1, 0}},
    {&clsOptions::RecordReplays, {1, 1, 1, 0}},
    {&clsOptions::SkipBlankReplays, {1, 1, 0}},
};

inline Settings settingsOf(const clsOptions &options)
{
    Settings settings;
    std::ranges::transform(SettingTable, settings.begin(),
                           [&](const SettingRow &row) { return row.of(options); });
    return settings;
}
