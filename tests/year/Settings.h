#pragma once

#include "core/clsOptions.h"

#include <QByteArray>

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

/// Where and as what they are changed on the web site.
inline const struct SettingRow
{
    const char *form;
    const char *field;
    std::variant<Setting<std::int32_t> clsOptions::*, Setting<bool> clsOptions::*> member;
    std::vector<int> values; ///< the first is the usual one

    bool isFlag() const { return member.index() == 1; }
    int of(const clsOptions &options) const
    {
        return std::visit([&](auto setting) { return int{(options.*setting)()}; }, member);
    }
    void let(clsOptions &options, int value) const
    {
        std::visit([&](auto setting) { (options.*setting).Let(value); }, member);
    }
} SettingTable[] = {
    {"ServerControl",
     "Pollingfreq",
     &clsOptions::ServerPollingFrequency,
     {3000, 250, 1000, 5000, 7000, 20000}},
    {"ServerControl", "StartupTimeout", &clsOptions::ServerStartupTimeout, {30, 8, 10, 60}},
    {"ServerControl", "Timeout", &clsOptions::ServerTimeout, {30, 1, 5, 10, 64}},
    {"Replays", "ReplayCount", &clsOptions::ReplayCount, {8, 1, 3, 5}},
    {"ServerControl", "AutoRestartGRServer", &clsOptions::AutoRestartGRServer, {1, 1, 1, 0}},
    {"ServerControl", "AutoRestartOnProcessStop", &clsOptions::AutoRestartOnProcessStop, {1, 1, 0}},
    {"ServerControl", "AutoStartGRServer", &clsOptions::AutoStartGRServer, {1, 1, 0}},
    {"SystemOptions", "ScanForProcesses", &clsOptions::FindGRServer, {1, 1, 0}},
    {"Replays", "archiveReplays", &clsOptions::RecordReplays, {1, 1, 1, 0}},
    {"Replays", "SkipBlankReplays", &clsOptions::SkipBlankReplays, {1, 1, 0}},
};

inline Settings settingsOf(const clsOptions &options)
{
    Settings settings;
    std::ranges::transform(SettingTable, settings.begin(),
                           [&](const SettingRow &row) { return row.of(options); });
    return settings;
}

/// The form on which the setting is, filled in.
inline QByteArray formOf(const SettingRow &wanted, const Settings &settings)
{
    QByteArray fields = "AdminUN=Admin&AdminPW=secret&StartWebServer=on&SubmitType=Update";
    for (std::size_t index = 0; index < settings.size(); ++index) {
        const SettingRow &row = SettingTable[index];
        if (qstrcmp(row.form, wanted.form) == 0 && (!row.isFlag() || settings[index] != 0)) {
            fields += QByteArray("&") + row.field + "=" +
                      (row.isFlag() ? QByteArray("on") : QByteArray::number(settings[index]));
        }
    }
    return fields;
}
