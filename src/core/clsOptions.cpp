#include "core/clsOptions.h"

#include "core/basMain.h"
#include "core/basNumbers.h"
#include "core/basSystem.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "core/config.h"
#include "platform/Failure.h"
#include "platform/Machine.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

using platform::XmlDocument;

constexpr Module Here{"Options", "Root Object"};
constexpr Module Xml{"Options", ""};
constexpr Routine Initialize = Here("Class_Initialize");

/// Stands for the folder "Replays" in the game's directory.
constexpr const char *DefaultFolder = "NONE";

/// The elements of the file, in the order in which they are written.
constexpr std::array Elements{
    "Version",
    "AutoRunOnStartup",
    "AutoStartGRServer",
    "AutoRestartGRServer",
    "AutoRestartOnProcessStop",
    "FindGRServer",
    "ServerPollingFreq",
    "ServerStartupTimeout",
    "ServerTimeout",
    "ServerCommandLineArgs",
    "RecordReplays",
    "SkipBlankReplays",
    "ReplayCount",
    "ReplaysPath",
    "ServerRunningGif",
    "ServerCrashGif",
    "RemoteAccessPort",
    "RemoteAccessIP",
    "AllowRemoteAccess",
    "AdminUserName",
    "AdminPassword",
};

QString defaultReplayFolder()
{
    return gRoot->RootDirectory() + u"Replays"_s;
}

QString initialText(const char *element)
{
    if (qstrcmp(element, "Version") == 0) {
        return u"1.03"_s;
    }
    return qstrcmp(element, "AllowRemoteAccess") == 0 ? u"FALSE"_s : QString();
}

/// A document with every element, or nothing when the operator gave up on a failure.
std::optional<XmlDocument> CreateXML()
{
    std::optional<XmlDocument> result;
    runWithRetry(Xml("CreateXML"), [&result] {
        XmlDocument document = XmlDocument::create("options");
        for (const char *const element : Elements) {
            document.root().append(element).setText(initialText(element));
        }
        result = std::move(document);
    });
    return result;
}

QString ExtractAttribute(XmlDocument &document, const char *element, const QString &missing)
{
    QString text;
    runWithRetry(Xml("ExtractAttribute"), [&] {
        const auto found = document.findFirst(element);
        text = found ? found->text() : QString();
    });
    return text.isEmpty() ? missing : text;
}

void SetAttribute(XmlDocument &document, const char *element, const QString &text)
{
    runWithRetry(Xml("SetAttribute"), [&] {
        if (auto found = document.findFirst(element)) {
            found->setText(text);
        }
    });
}

} // namespace

const std::array<clsOptions::Row, 20> clsOptions::Table{{
    {"AutoRunOnStartup", &clsOptions::m_autoRunInFile, "True"},
    {"AutoRestartOnProcessStop", &clsOptions::AutoRestartOnProcessStop, "True"},
    {"AutoStartGRServer", &clsOptions::AutoStartGRServer, "True"},
    {"AutoRestartGRServer", &clsOptions::AutoRestartGRServer, "True"},
    {"FindGRServer", &clsOptions::FindGRServer, "True"},
    {"ServerPollingFreq", &clsOptions::ServerPollingFrequency, "3000"},
    {"ServerStartupTimeout", &clsOptions::ServerStartupTimeout, "30"},
    {"ServerTimeout", &clsOptions::ServerTimeout, "30"},
    {"ServerCommandLineArgs", &clsOptions::ServerCommandLineArgs, ""},
    {"RecordReplays", &clsOptions::RecordReplays, "True"},
    {"SkipBlankReplays", &clsOptions::SkipBlankReplays, "True"},
    {"ReplayCount", &clsOptions::ReplayCount, "50"},
    {"ReplaysPath", &clsOptions::ReplayFolder, DefaultFolder},
    {"ServerCrashGif", &clsOptions::ServerCrashGif, config::ServerCrashImage},
    {"ServerRunningGif", &clsOptions::ServerRunningGif, config::ServerRunningImage},
    {"RemoteAccessPort", &clsOptions::RemoteAccessPort, "80"},
    {"RemoteAccessIP", &clsOptions::RemoteAccessIP, ""},
    {"AllowRemoteAccess", &clsOptions::AllowRemoteAccess, "False"},
    {"AdminUserName", &clsOptions::AdminUserName, ""},
    {"AdminPassword", &clsOptions::AdminPassword, ""},
}};

bool RunOnStartupSetting::operator()() const
{
    return GetRunOnStartup();
}

void RunOnStartupSetting::Let(bool value) const
{
    Ex(value);
    noteLet();
}

void RunOnStartupSetting::Ex(bool value) const
{
    SetRunOnStartup(value);
}

clsOptions::clsOptions()
    : ReplayFolder(defaultReplayFolder()),
      tmrSave(gRoot->Machine().clock, [this] { tmrSave_Timer(); }),
      m_path(gRoot->RootDirectory() + u"ZebekSuiteOptions.xml"_s)
{
    if (XmlDocument::libraryAvailable()) {
        Load();
        return;
    }
    showFailure(Initialize,
                {0, u"Unable to initialize MSXML. The options file cannot be loaded, "
                    "defaults will be used, no preferences will be saved"_s},
                platform::AcceptsAlone);
}

void clsOptions::Load()
{
    std::optional<XmlDocument> document;
    try {
        document = XmlDocument::loadOrFail(m_path);
    } catch (const platform::Failure &failure) {
        m_fileUnread = true; // nor is one that comes later, as with a disk that is mounted late
        document = CreateXML();
        if (QFile::exists(m_path)) {
            recordFailure(Initialize,
                          {failure.number(), failure.description() +
                                                 u". The defaults hold; the file is kept under "
                                                 "another name when it is replaced"_s});
        }
    }
    if (!document) {
        return;
    }
    for (const Row &row : Table) {
        if (!runWithRetry(
                Initialize, [&] { loadSetting(*document, row); }, platform::CancelsAlone)) {
            m_fileUnread = true;
            recordFailure(Initialize,
                          {platform::Failure::TypeMismatch,
                           u"The value of %1 cannot be read. It and the settings behind it are not "
                           "those of the file, which is kept under another name when it is "
                           "replaced"_s.arg(QLatin1String(row.element))});
            break;
        }
    }
    skipFailure([this] { m_autoRunInFile.Ex(fnToText(fnToBoolean(m_autoRunInFile()))); });
}

void clsOptions::loadSetting(XmlDocument &document, const Row &row)
{
    const QString text = ExtractAttribute(document, row.element, QString::fromUtf8(row.missing));
    std::visit(
        [&](auto member) {
            using Value = std::decay_t<decltype((this->*member)())>;
            try {
                (this->*member).Ex(fnFromText<Value>(text));
            } catch (const platform::Failure &failure) {
                throw platform::Failure(
                    failure.number(),
                    u"%1: %2"_s.arg(QLatin1String(row.element), failure.description()));
            }
        },
        row.member);
    if (qstrcmp(row.element, "ReplaysPath") == 0 && text == QLatin1String(DefaultFolder)) {
        ReplayFolder.Ex(defaultReplayFolder());
    }
}

void clsOptions::Save()
{
    runWithRetry(Here("Class_Terminate"), [this] {
        // Anew at each try: while the box was open, others may have changed and saved settings.
        if (const std::optional<XmlDocument> document = toXml()) {
            write(*document);
        }
    });
}

bool clsOptions::saveUnattended()
{
    const std::optional<XmlDocument> document = toXml();
    return !document || trapRepeated(Here("Class_Terminate"), [&] {
        write(*document);
        return true;
    });
}

void clsOptions::saveSoon()
{
    constexpr int Milliseconds = 2000;
    if (tmrSave.Interval() == 0) { // else changes without a pause would put it off for ever
        tmrSave.setInterval(Milliseconds);
    }
}

void clsOptions::tmrSave_Timer()
{
    if (saveUnattended()) {
        tmrSave.setInterval(0);
    }
}

void clsOptions::notify(const SettingBase &changed) const
{
    if (m_observer != nullptr) {
        m_observer(changed);
    }
}

/// Nothing without an XML library.
std::optional<XmlDocument> clsOptions::toXml()
{
    std::optional<XmlDocument> document;
    if (XmlDocument::libraryAvailable()) {
        document = CreateXML();
    }
    if (!document) {
        return std::nullopt;
    }
    for (const Row &row : Table) {
        std::visit(
            [&](auto member) { SetAttribute(*document, row.element, fnToText((this->*member)())); },
            row.member);
    }
    return document;
}

void clsOptions::write(const XmlDocument &document)
{
    copyUnreadFileAside();
    platform::replaceFile(gRoot->Machine().files, m_path, document.toBytes(),
                          platform::Durability::SurvivesPowerLoss, {.ownerOnly = true});
    m_fileUnread = false;
}

void clsOptions::copyUnreadFileAside()
{
    if (!m_fileUnread || !QFile::exists(m_path)) { // the operator may have put it away
        return;
    }
    const QString base = gRoot->RootDirectory() + u"ZebekSuiteOptions.unreadable"_s;
    QString aside = base + u".xml"_s;
    for (int number = 2; QFile::exists(aside); ++number) {
        aside = u"%1-%2.xml"_s.arg(base, QString::number(number));
    }
    platform::Files &files = gRoot->Machine().files;
    if (QFileInfo(m_path).isReadable()) {
        platform::replaceFile(files, aside, platform::readFile(m_path),
                              platform::Durability::SurvivesPowerLoss, {.like = m_path});
    } else {
        files.rename(m_path, aside); // another user's, from a run as administrator perhaps
    }
    m_fileUnread = false;
}

QString clsOptions::StatsPath()
{
    return gRoot->RootDirectory() + u"Stats"_s;
}
