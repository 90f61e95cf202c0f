#include "server/clsMods.h"

#include "core/basGamePath.h"
#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/CodePage.h"
#include "platform/Machine.h"

#include <QDirIterator>
#include <QFile>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr Module Here{"Options XML Class", "Unknown"};

QString listPath()
{
    return fnGamePath(u"modsset.txt"_s);
}

QString heading()
{
    return u"// MODS SETTINGS - LIST OF MODS ACTIVE ON THIS SYSTEM\r\n"_s;
}

/// The key that a line names: the line without its quotes, whatever the last character is. Empty
/// for a line that does not begin with a quote.
QString fnModNameFromFile(const QString &line)
{
    return line.startsWith(u'"') ? line.mid(1, line.size() - 2) : QString();
}

} // namespace

void clsMods::Load()
{
    m_failure.clear();
    const bool found = LoadAvailableMods();
    if (found && m_mods.empty()) {
        m_failure = fnGamePath(u"Mods"_s) + u": There is no mod"_s;
    }
    m_loaded = CheckActiveMods() && found && !m_mods.empty();
    m_changed = false;
}

bool clsMods::LoadAvailableMods()
{
    m_active.clear();
    m_mods.clear();
    const auto load = [this] {
        const QString folder = fnGamePath(u"Mods"_s);
        platform::requireFolder(folder);
        QDirIterator folders(folder, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
        while (folders.hasNext()) {
            const QString path = folders.next();
            const QString key = u"\\mods\\"_s + folders.fileName();
            if (folders.fileName() == "Origmiss"_L1 || find(key) != nullptr) {
                continue;
            }
            auto mod = std::make_unique<clsModInfo>();
            mod->setModPath(path);
            mod->ModName = key;
            m_mods.push_back(std::move(mod));
        }
        return true;
    };
    return trapRepeated(Here("LoadAvailableMods"), withReason(m_failure, load));
}

bool clsMods::CheckActiveMods()
{
    const auto activate = [this] {
        const QStringList lines = platform::fromCodePage(platform::readFile(listPath()))
                                      .replace(u"\r\n"_s, u"\n"_s)
                                      .split(u'\n');
        for (const QString &line : lines) {
            if (line.isEmpty()) {
                break;
            }
            ActivateMod(fnModNameFromFile(line));
        }
        return true;
    };
    QString reason;
    const bool read = trapRepeated(Here("CheckActiveMods"), withReason(reason, activate));
    if (read || !QFile::exists(listPath())) { // Save() can make a missing one
        return true;
    }
    m_failure = m_failure.isEmpty() ? reason : m_failure;
    return false;
}

bool clsMods::Save()
{
    if (!m_loaded || !m_changed) {
        return m_loaded;
    }
    const auto save = [this] {
        QString text = heading();
        for (const clsModInfo *const mod : m_active) {
            text += u"\"%1\"\r\n"_s.arg(mod->ModName.toLower());
        }
        platform::replaceFile(gRoot->Machine().files, listPath(), platform::toCodePage(text),
                              platform::Durability::SurvivesPowerLoss);
        m_changed = false;
        return true;
    };
    return trap(Here("Save"), withReason(m_failure, save));
}

clsModInfo *clsMods::find(const QString &key) const
{
    for (const auto &mod : m_mods) {
        if (mod->ModName.compare(key, Qt::CaseInsensitive) == 0) {
            return mod.get();
        }
    }
    return nullptr;
}

void clsMods::ActivateMod(const QString &in_strModName)
{
    clsModInfo *const mod = find(in_strModName);
    if (mod != nullptr && !mod->Active) {
        m_active.push_back(mod);
        noteChange();
    }
}

void clsMods::DeactivateMod(const QString &in_strModName)
{
    if (std::erase(m_active, find(in_strModName)) > 0) {
        noteChange();
    }
}

void clsMods::DecreaseModPosition(const QString &in_strModName)
{
    const auto place = std::ranges::find(m_active, find(in_strModName));
    if (place != m_active.end() && place != m_active.begin()) {
        std::iter_swap(place, place - 1);
        noteChange();
    }
}

void clsMods::IncreaseModPosition(const QString &in_strModName)
{
    const auto place = std::ranges::find(m_active, find(in_strModName));
    if (place != m_active.end() && place + 1 != m_active.end()) {
        std::iter_swap(place, place + 1);
        noteChange();
    }
}

void clsMods::noteChange()
{
    m_changed = true;
    for (const auto &mod : m_mods) {
        mod->Active = false;
        mod->PreviousActiveMod = nullptr;
        mod->NextActiveMod = nullptr;
    }
    clsModInfo *previous = nullptr;
    for (clsModInfo *const mod : m_active) {
        mod->Active = true;
        mod->PreviousActiveMod = previous;
        if (previous != nullptr) {
            previous->NextActiveMod = mod;
        }
        previous = mod;
    }
}
