#pragma once

#include "core/Setting.h"
#include "platform/Timer.h"
#include "platform/XmlDocument.h"

#include <QString>

#include <array>
#include <cstdint>
#include <optional>
#include <variant>

/// Whether the tool starts when somebody logs on; kept by the system, not in the file.
class RunOnStartupSetting : public SettingBase
{
public:
    bool operator()() const;
    void Let(bool value) const;
    void Ex(bool value) const;
};

/// The tool's own settings. Read from a file when the object is made, written back by Save() at the
/// end of the program and 2 s after the last change, so that a power cut does not undo months.
///
/// The file "ZebekSuiteOptions.xml" in the game's directory is an XML document (UTF-8 when we write
/// it) with the root element `options` and one element without attributes a setting, its value as
/// text: "True" or "False", decimal integers, text as it is. Elements are found by name anywhere in
/// the document; a missing or empty one has the default of the table in clsOptions.cpp. A file made
/// anew can be read by its owner alone, for it holds a password.
class clsOptions
{
public:
    /// Loads the file. One that cannot be read is recorded. A value that cannot be converted is
    /// shown with Retry and Cancel; Cancel leaves the settings not yet read at the values below.
    /// Without an XML library all stay so, and nothing will be saved.
    clsOptions();

    /// Writes the file whole. A file that could not be read, or not to its end, when the settings
    /// were loaded is first copied under another name. A failure is shown with Retry and Cancel.
    void Save();
    /// The same when nobody can be asked: a failure is recorded, each reason once. True when the
    /// file holds the settings.
    bool saveUnattended();
    /// A setting has changed.
    void saveSoon();
    /// Saves; what fails is tried again at the next tick.
    void tmrSave_Timer();

    /// Is told of every setting that Let() has changed, at once.
    using Observer = void (*)(const SettingBase &);
    void setObserver(Observer observer) { m_observer = observer; }
    void notify(const SettingBase &changed) const;

    Setting<QString> AdminUserName{QStringLiteral("Admin")};
    Setting<QString> AdminPassword;
    Setting<bool> AllowRemoteAccess;
    RunOnStartupSetting AutoRunOnStartup;
    Setting<bool> AutoStartGRServer;
    Setting<bool> AutoRestartGRServer;
    Setting<bool> AutoRestartOnProcessStop;
    Setting<bool> FindGRServer;
    Setting<QString> RemoteAccessIP;
    Setting<std::int32_t> RemoteAccessPort{80};
    Setting<std::int32_t> ReplayCount{100};
    Setting<bool> RecordReplays{true};
    Setting<QString> ReplayFolder;
    Setting<std::int32_t> ServerPollingFrequency; ///< milliseconds
    Setting<std::int32_t> ServerStartupTimeout;   ///< seconds
    Setting<std::int32_t> ServerTimeout;          ///< seconds
    Setting<QString> ServerCommandLineArgs;
    Setting<bool> SkipBlankReplays{true};
    Setting<QString> ServerRunningGif; ///< URL of an image
    Setting<QString> ServerCrashGif;   ///< URL of an image

    /// Whether there are a user name and a password, without which nobody is administrator.
    bool hasLogIn() const { return !AdminUserName().isEmpty() && !AdminPassword().isEmpty(); }

    /// The folder that the keys of the match records are formed from.
    static QString StatsPath();

private:
    using Member = std::variant<Setting<bool> clsOptions::*, Setting<std::int32_t> clsOptions::*,
                                Setting<QString> clsOptions::*>;
    struct Row
    {
        const char *element;
        Member member;
        const char *missing; ///< what a missing or empty element stands for
    };
    /// In the order in which the settings are read.
    static const std::array<Row, 20> Table;

    void Load();
    void loadSetting(platform::XmlDocument &document, const Row &row);
    std::optional<platform::XmlDocument> toXml();
    void write(const platform::XmlDocument &document);
    void copyUnreadFileAside();

    platform::Timer tmrSave;
    Observer m_observer = nullptr;
    /// What the file said; it is only carried over, be it a Boolean or not.
    Setting<QString> m_autoRunInFile;
    QString m_path;
    /// The file holds what was not loaded and would be lost by saving.
    bool m_fileUnread = false;
};
