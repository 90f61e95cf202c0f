#pragma once

#include "server/clsModInfo.h"

#include <QString>

#include <memory>
#include <vector>

/// The mods installed on this machine, and which of them are active in which order.
///
/// Mods are the folders below "Mods" but for the game's own, "Origmiss". The active ones are listed
/// in the game's file "modsset.txt", text in the code page with CR LF after every line: a heading,
/// then a line a mod, its key in lower case within double quotes.
class clsMods
{
public:
    clsMods() = default;
    clsMods(const clsMods &) = delete;
    clsMods &operator=(const clsMods &) = delete;
    ~clsMods() = default;

    /// Finds the mods and reads which are active. What is missing or unreadable is recorded once,
    /// and again when it has been there meanwhile.
    void Load();
    /// Writes the list of active mods if one of the operations has changed it since Load(). Nothing
    /// is written while the list could not be read or there is no mod at all, as where "Mods" is an
    /// empty mount point, for that would end the game's own list. False then, and after a failure,
    /// which is recorded.
    bool Save();
    /// Why the mods could not be had, or Save() failed.
    const QString &failure() const { return m_failure; }

    /// Keys do not mind the case of letters; one of no mod changes nothing.
    /// Appends the mod to the active ones.
    void ActivateMod(const QString &in_strModName);
    void DeactivateMod(const QString &in_strModName);
    /// Moves an active mod one place towards the first.
    void DecreaseModPosition(const QString &in_strModName);
    /// Moves an active mod one place towards the last.
    void IncreaseModPosition(const QString &in_strModName);

    /// In the order in which the file system lists their folders.
    const std::vector<std::unique_ptr<clsModInfo>> &Mods() const { return m_mods; }
    const std::vector<clsModInfo *> &activeMods() const { return m_active; }
    clsModInfo *FirstActiveMod() const { return m_active.empty() ? nullptr : m_active.front(); }
    clsModInfo *LastActiveMod() const { return m_active.empty() ? nullptr : m_active.back(); }

private:
    /// These tell whether what they are to read is known now.
    bool LoadAvailableMods();
    bool CheckActiveMods();
    clsModInfo *find(const QString &key) const;
    /// The active ones have changed: lets each mod tell its place among them.
    void noteChange();

    std::vector<std::unique_ptr<clsModInfo>> m_mods;
    std::vector<clsModInfo *> m_active; ///< in their order
    bool m_loaded = false;
    bool m_changed = false;
    QString m_failure;
};
