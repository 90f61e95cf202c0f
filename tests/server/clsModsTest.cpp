#include "server/clsMods.h"

#include "support/RootTest.h"

class clsModsTest : public ServicesTest
{
protected:
    clsModsTest()
    {
        startIdle();
        QFile::remove(path(u"modsset.txt"_s));
        QDir(directory.path()).rmdir(u"Mods"_s);
    }
    void addMod(const QString &folder) { QDir(directory.path()).mkpath(u"mods/"_s + folder); }
    static QStringList activeMods(const clsMods &mods)
    {
        QStringList forward;
        QStringList backward;
        for (auto *mod = mods.FirstActiveMod(); mod != nullptr; mod = mod->NextActiveMod) {
            forward.append(mod->ModName);
        }
        for (auto *mod = mods.LastActiveMod(); mod != nullptr; mod = mod->PreviousActiveMod) {
            backward.prepend(mod->ModName);
        }
        EXPECT_EQ(forward, backward);
        for (const auto &mod : mods.Mods()) {
            EXPECT_EQ(mod->Active, forward.contains(mod->ModName));
        }
        return forward;
    }
};

TEST_F(clsModsTest, FindsModsAndReadsAndWritesTheActiveOnes)
{
    for (const char *folder : {"Desert", "Urban", "Origmiss", "Ärger"}) {
        addMod(QString::fromUtf8(folder));
    }
    write(u"mods/a file"_s, "no mod");
    write(u"ModsSet.txt"_s, "// HEADER\r\n\"\\mods\\urban\"\r\n\"\\mods\\missing\"\r\nnoise\r\n"
                            "\"\\mods\\DESERT\"\r\n\"\\mods\\urban\"\r\n\"\\mods\\\xE4rgerX\r\n"
                            "\r\n\"\\mods\\origmiss\"\r\n");
    clsMods mods;
    mods.Load();
    EXPECT_EQ(mods.Mods().size(), 3U);
    EXPECT_EQ(activeMods(mods),
              (QStringList{u"\\mods\\Urban"_s, u"\\mods\\Desert"_s, u"\\mods\\Ärger"_s}));
    mods.ActivateMod(u"\\mods\\urban"_s); // as it is
    EXPECT_TRUE(mods.Save());
    EXPECT_TRUE(read(u"ModsSet.txt"_s).contains("noise")) << "nothing to write";
    mods.DeactivateMod(u"\\mods\\Ärger"_s);
    mods.ActivateMod(u"\\mods\\Ärger"_s);
    EXPECT_TRUE(mods.Save());
    const QByteArray heading = "// MODS SETTINGS - LIST OF MODS ACTIVE ON THIS SYSTEM\r\n";
    EXPECT_EQ(read(u"ModsSet.txt"_s), heading + "\"\\mods\\urban\"\r\n\"\\mods\\desert\"\r\n"
                                                "\"\\mods\\\xE4rger\"\r\n");
    for (const auto &mod : mods.Mods()) {
        mods.DeactivateMod(mod->ModName);
    }
    mods.Save();
    EXPECT_EQ(read(u"ModsSet.txt"_s), heading);
    EXPECT_EQ(recordCount(), 0);
}

TEST_F(clsModsTest, WhatCannotBeReadIsRecordedAndNotOverwritten)
{
    const QByteArray list = "\"\\mods\\desert\"\r\n";
    write(u"modsset.txt"_s, list);
    clsMods mods;
    mods.Save();
    mods.Load();
    EXPECT_TRUE(mods.Mods().empty());
    EXPECT_EQ(lastRecord(), u"Options XML Class|LoadAvailableMods|Unknown|75"_s);
    EXPECT_FALSE(mods.Save());
    QDir(directory.path()).mkdir(u"Mods"_s); // as where something is to be mounted
    mods.Load();
    EXPECT_FALSE(mods.Save());
    EXPECT_EQ(read(u"modsset.txt"_s), list);
    QDir(directory.path()).rmdir(u"Mods"_s);

    addMod(u"Desert"_s);
    QFile::rename(path(u"modsset.txt"_s), path(u"away"_s));
    QDir(directory.path()).mkdir(u"modsset.txt"_s); // exists and cannot be read
    mods.Load();
    EXPECT_EQ(lastRecord(), u"Options XML Class|CheckActiveMods|Unknown|75"_s);
    mods.ActivateMod(u"\\mods\\desert"_s);
    EXPECT_FALSE(mods.Save());
    EXPECT_EQ(recordCount(), 2) << "no attempt to replace it";
}

TEST_F(clsModsTest, OperationsAtTheEndsAndInTheMiddleKeepTheOrder)
{
    for (const char *folder : {"A", "B", "C", "D"}) {
        addMod(QString::fromLatin1(folder));
    }
    write(u"modsset.txt"_s, {});
    clsMods mods;
    mods.Load();
    const struct
    {
        void (clsMods::*change)(const QString &);
        const char *mods; ///< which are changed one after the other; "x" is none that exists
        const char *order;
    } steps[] = {
        {&clsMods::ActivateMod, "abxcdb", "ABCD"},
        {&clsMods::DecreaseModPosition, "axd", "ABDC"},
        {&clsMods::DecreaseModPosition, "b", "BADC"},
        {&clsMods::IncreaseModPosition, "cxb", "ABDC"},
        {&clsMods::IncreaseModPosition, "d", "ABCD"},
        {&clsMods::DeactivateMod, "bxb", "ACD"},
        {&clsMods::DeactivateMod, "a", "CD"},
        {&clsMods::DeactivateMod, "d", "C"},
        {&clsMods::ActivateMod, "da", "CDA"},
        {&clsMods::DeactivateMod, "dca", ""},
        {&clsMods::ActivateMod, "b", "B"},
    };
    for (const auto &[change, changed, order] : steps) {
        for (const QChar mod : QString::fromLatin1(changed)) {
            (mods.*change)(u"\\mods\\"_s + mod);
        }
        EXPECT_EQ(activeMods(mods).join(QString()).remove(u"\\mods\\"_s), QLatin1String(order));
    }
}
