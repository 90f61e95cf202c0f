#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

/// The game's own files, with as little in them as the tool misses nothing of.
inline void writeGameFiles(const QString &directory)
{
    QByteArray settings;
    for (const char *number : {"JoinPort", "AnnouncePort", "GameSynchTimeout", "RemoteServerAccess",
                               "RecordGame", "BehindFirewall"}) {
        settings += QByteArray("<") + number + ">1</" + number + ">";
    }
    settings += "<MPGameName/><MOTD/><RemoteServerPasswd/>";
    const QDir folder(directory);
    folder.mkdir(QStringLiteral("Mods"));
    QFile options(folder.filePath(QStringLiteral("options.xml")));
    options.open(QIODevice::WriteOnly);
    options.write("<game>" + settings + "</game>");
    QFile(folder.filePath(QStringLiteral("modsset.txt"))).open(QIODevice::WriteOnly);
}
