#include "ui/manual.h"

#include "core/basMain.h"
#include "core/clsZebek.h"
#include "ui/messages.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

void openManual()
{
    const QString title = u"Manual"_s;
    const QString beside = gRoot->RootDirectory() + u"ZebekManual"_s;
    QString page = QDir(beside).filePath(u"index.html"_s);
    if (!QFile::exists(page)) {
        page = QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                      u"doc/zebek-suite/manual/index.html"_s);
    }
    if (page.isEmpty()) {
        showMessage(
            u"The manual is not here. Copy the folder \"ZebekManual\" of the release to \"%1\""_s
                .arg(beside),
            title);
    } else {
        openOrTell(u"file"_s, page, title);
    }
}
