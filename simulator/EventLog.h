#pragma once

#include <QFile>
#include <QString>

/// The file of the switch -log: one line per event,
///
///     2024-03-15T21:07:09.123  match-started Castle
///
/// that is the local time in ISO 8601 with milliseconds, two blanks, the event; UTF-8, LF.
/// The file is only appended to, every line in one unbuffered write, so that whoever waits for
/// an event never reads half a line and several simulators may share a file.
class EventLog
{
public:
    /// An empty name keeps no log. False when the file cannot be opened.
    bool open(const QString &fileName);

    void record(const QString &event);

    /// Records the event and prints it on stderr: something the operator should know.
    void complain(const QString &event);

private:
    QFile m_file;
};
