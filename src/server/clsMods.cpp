#include "server/clsMods.h"

#include "core/basGamePath.h"
#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/CodePage.h"
#include "platform/Machine.h"

#include <QDirIterator>
#include <QFile>

namespace {

constexpr Routine routine(const char *name)
{
    return {"Options XML Class", name, "Unknown"};
}

QString listPath()
{
    return fnGamePath(QStringLiteral("modsset.txt"));
}

QString heading()
{
    return QStringLiteral("// MODS SETTINGS - LIST OF MODS ACTIVE ON THIS SYSTEM\r\n");
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
    const bool found = LoadAvailableMods();
    m_loaded = CheckActiveMods() && found && !m_mods.empty();
    m_changed = false;
}

bool clsMods::LoadAvailableMods()
{
    m_first = nullptr;
    m_last = nullptr;
    m_mods.clear();
    return TrapRepeated(routine("LoadAvailableMods"), [this] {
        const QString folder = fnGamePath(QStringLiteral("Mods"));
        platform::requireFolder(folder);
        QDirIterator folders(folder, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
        while (folders.hasNext()) {
            const QString path = folders.next();
            const QString key = QStringLiteral("\\mods\\") + folders.fileName();
            if (folders.fileName() == QLatin1String("Origmiss") || find(key) != nullptr) {
                continue;
            }
            auto mod = std::make_unique<clsModInfo>();
            mod->setModPath(path);
            mod->ModName = key;
            m_mods.push_back(std::move(mod));
        }
        return true;
    });
}

bool clsMods::CheckActiveMods()
{
    m_first = nullptr;
    m_last = nullptr;
    const bool read = TrapRepeated(routine("CheckActiveMods"), [this] {
        const QStringList lines = platform::fromCodePage(platform::readFile(listPath()))
                                      .replace(QStringLiteral("\r\n"), QStringLiteral("\n"))
                                      .split(u'\n');
        for (const QString &line : lines) {
            if (line.isEmpty()) {
                break;
            }
            ActivateMod(fnModNameFromFile(line));
        }
        return true;
    });
    return read || !QFile::exists(listPath()); // Save() can make a missing one
}

bool clsMods::Save()
{
    if (!m_loaded || !m_changed) {
        return m_loaded;
    }
    return Trap(routine("Save"), [this] {
        QString text = heading();
        for (const clsModInfo *mod = m_first; mod != nullptr; mod = mod->NextActiveMod) {
            text += QStringLiteral("\"%1\"\r\n").arg(mod->ModName.toLower());
        }
        platform::replaceFile(gRoot->Machine().files, listPath(), platform::toCodePage(text),
                              platform::Durability::SurvivesPowerLoss);
        m_changed = false;
        return true;
    });
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
        append(*mod);
    }
}

void clsMods::DeactivateMod(const QString &in_strModName)
{
    clsModInfo *const mod = find(in_strModName);
    if (mod != nullptr && mod->Active) {
        unlink(*mod);
    }
}

void clsMods::DecreaseModPosition(const QString &in_strModName)
{
    const clsModInfo *const mod = find(in_strModName);
    if (mod != nullptr && mod->PreviousActiveMod != nullptr) {
        swapWithNext(*mod->PreviousActiveMod);
    }
}

void clsMods::IncreaseModPosition(const QString &in_strModName)
{
    clsModInfo *const mod = find(in_strModName);
    if (mod != nullptr && mod->NextActiveMod != nullptr) {
        swapWithNext(*mod);
    }
}

void clsMods::append(clsModInfo &mod)
{
    m_changed = true;
    mod.Active = true;
    mod.PreviousActiveMod = m_last;
    mod.NextActiveMod = nullptr;
    (m_last == nullptr ? m_first : m_last->NextActiveMod) = &mod;
    m_last = &mod;
}

void clsMods::unlink(clsModInfo &mod)
{
    m_changed = true;
    mod.Active = false;
    (mod.PreviousActiveMod == nullptr ? m_first : mod.PreviousActiveMod->NextActiveMod) =
        mod.NextActiveMod;
    (mod.NextActiveMod == nullptr ? m_last : mod.NextActiveMod->PreviousActiveMod) =
        mod.PreviousActiveMod;
    mod.PreviousActiveMod = nullptr;
    mod.NextActiveMod = nullptr;
}

void clsMods::swapWithNext(clsModInfo &mod)
{
    m_changed = true;
    clsModInfo &next = *mod.NextActiveMod;
    clsModInfo *const before = mod.PreviousActiveMod;
    clsModInfo *const after = next.NextActiveMod;
    (before == nullptr ? m_first : before->NextActiveMod) = &next;
    (after == nullptr ? m_last : after->PreviousActiveMod) = &mod;
    next.PreviousActiveMod = before;
    next.NextActiveMod = &mod;
    mod.PreviousActiveMod = &next;
    mod.NextActiveMod = after;
}
