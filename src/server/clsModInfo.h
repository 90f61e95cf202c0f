#pragma once

#include <QString>

/// One mod of the game, a folder below "Mods". Of an active one clsMods tells its neighbours.
class clsModInfo
{
public:
    /// Reads the display name from "ModsCont.txt" in the mod's folder. It stays as it was where
    /// there is none.
    void setModPath(const QString &path);
    /// Empty for a mod that does not tell its name.
    const QString &Name() const { return m_name; }
    /// The name to show: that of the folder for a mod that does not tell its own.
    QString shownName() const;

    bool Active = false;
    QString ModName; ///< the key: "\mods\" and the folder's name
    clsModInfo *PreviousActiveMod = nullptr;
    clsModInfo *NextActiveMod = nullptr;

private:
    QString m_name;
};
