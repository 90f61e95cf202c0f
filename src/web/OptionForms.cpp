// The forms of the tool's own settings.
#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "web/FormFields.h"
#include "web/UpdateForms.h"

using namespace Qt::StringLiterals;

namespace {

using Field = FormField<clsOptions, Setting>;

constexpr Field ReplayFields[] = {
    {"archiveReplays", &clsOptions::RecordReplays},
    {"SkipBlankReplays", &clsOptions::SkipBlankReplays},
    {"ReplayCount", &clsOptions::ReplayCount,
     "Please enter a valid number for the replay count<br>"},
};

constexpr Field ServerControlFields[] = {
    {"AutoStartGRServer", &clsOptions::AutoStartGRServer},
    {"CMDLine", &clsOptions::ServerCommandLineArgs},
    {"AutoRestartGRServer", &clsOptions::AutoRestartGRServer},
    {"AutoRestartOnProcessStop", &clsOptions::AutoRestartOnProcessStop},
    {"Pollingfreq", &clsOptions::ServerPollingFrequency,
     "Please enter a valid number for the Polling Frequency (0-65535)<br>", 65535},
    {"Timeout", &clsOptions::ServerTimeout,
     "Please enter a valid number for the server time out (0-64)<br>", 64},
    {"StartupTimeout", &clsOptions::ServerStartupTimeout,
     "Please enter a valid number for the server startup time out (0-64)<br>", 64},
};

constexpr Field StatusFields[] = {
    {"ServerGo", &clsOptions::ServerRunningGif},
    {"ServerCrash", &clsOptions::ServerCrashGif},
};

constexpr Field SystemFields[] = {
    {"ScanForProcesses", &clsOptions::FindGRServer},
    {"StartWebServer", &clsOptions::AllowRemoteAccess},
    {"AdminUN", &clsOptions::AdminUserName},
    {"AdminPW", &clsOptions::AdminPassword},
};

constexpr auto StoreAndRender = [](auto &setting, const auto &value) { setting.Let(value); };
/// For a form whose page is rendered afterwards.
constexpr auto StoreOnly = [](auto &setting, const auto &value) { setting.Ex(value); };

template <std::size_t Count, typename Store>
QString storeOptions(const char *routine, const clsWebServerRequest &request,
                     const Field (&fields)[Count], Store store)
{
    return trapUpdate(routine,
                      [&] { return storeForm(request, *gRoot->Options(), fields, store); });
}

} // namespace

QString Update_ReplayConfig(const clsWebServerRequest &request)
{
    return storeOptions("Update_ReplayConfig", request, ReplayFields, StoreAndRender);
}

QString Update_ServerControlConfig(const clsWebServerRequest &request)
{
    return storeOptions("Update_ServerControlConfig", request, ServerControlFields, StoreOnly);
}

QString Update_StatusOptionsConfig(const clsWebServerRequest &request)
{
    return storeOptions("Update_StatusOptionsConfig", request, StatusFields, StoreOnly);
}

/// A log-in without a name or a password, as a form that was cut has it, would let nobody in.
QString Update_SystemOptionsConfig(const clsWebServerRequest &request)
{
    for (const char *const field : {"AdminUN", "AdminPW"}) {
        if (request.FormField(QLatin1String(field)).isEmpty()) {
            return u"Please enter a user name and a password. Nothing was changed<br>"_s;
        }
    }
    return storeOptions("Update_SystemOptionsConfig", request, SystemFields, StoreOnly);
}
