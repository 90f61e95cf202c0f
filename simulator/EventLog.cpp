#include "EventLog.h"

#include <QDateTime>
#include <QTextStream>

#include <cstdio>

using namespace Qt::StringLiterals;

bool EventLog::open(const QString &fileName)
{
    if (fileName.isEmpty()) {
        return true;
    }
    m_file.setFileName(fileName);
    return m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
}

void EventLog::record(const QString &event)
{
    if (!m_file.isOpen()) {
        return;
    }
    const QString time = QDateTime::currentDateTime().toString(Qt::ISODateWithMs);
    m_file.write((time + u"  "_s + event + u'\n').toUtf8());
}

void EventLog::complain(const QString &event)
{
    record(event);
    QTextStream(stderr) << "GhostRecon.exe: " << event << '\n';
}
