#include "core/basVersion.h"

#include "core/config.h"

using namespace Qt::StringLiterals;

QString fnVersionLine()
{
    return u"Zebek Suite v%1.%2.%3"_s.arg(config::VersionMajor)
        .arg(config::VersionMinor, 2, 10, QChar(u'0'))
        .arg(config::VersionRevision, 3, 10, QChar(u'0'));
}
