#include "core/basMain.h"
#include "platform/Files.h"
#include "platform/Machine.h"
#include "server/clsMods.h"
#include "support/FakeRoot.h"

#include <QDir>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

static QStringList activeMods(const clsMods &mods)
{
    QStringList keys;
    for (const clsModInfo *const mod : mods.activeMods()) {
        keys.append(mod->ModName);
    }
    return keys;
}

/// Lists of active mods, and descriptions of a mod, of any content: what is active once it has been
/// changed is so when the list is read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir directory;
    static FakeRoot root(platform::nativeMachine(), directory.path()); // has no error log
    gRoot = &root;
    const QDir game(root.RootDirectory());
    for (const char *const folder : {"Mods/Coast", "Mods/Night", "Mods/Third"}) {
        game.mkpath(QString::fromLatin1(folder));
    }
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    for (const char *const file : {"modsset.txt", "Mods/Coast/ModsCont.txt"}) {
        platform::replaceFile(root.Machine().files, game.filePath(QString::fromLatin1(file)), bytes,
                              platform::Durability::SurvivesCrash);
    }
    clsMods mods;
    mods.Load();
    const QString toggled = QStringLiteral("\\mods\\night");
    mods.DeactivateMod(toggled);
    mods.ActivateMod(toggled);
    clsMods again;
    if (!mods.Save()) {
        std::abort();
    }
    again.Load();
    if (activeMods(mods) != activeMods(again) ||
        again.activeMods().back()->ModName.toLower() != toggled) {
        std::abort();
    }
    return 0;
}
