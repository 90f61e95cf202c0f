#pragma once

#include <QByteArray>
#include <QFile>

/// The content of a file as it is now, for an answer that takes its time. A file that is replaced
/// or deleted meanwhile stays readable (Windows allows neither); of the error log, which is
/// continued in place, only the end changes, and that is read at once.
class FileContent
{
public:
    /// Throws platform::Failure where the file cannot be read.
    explicit FileContent(const QString &path);

    /// The next piece; empty at the end. Throws platform::Failure.
    QByteArray next();

private:
    QByteArray read(qint64 size);

    QFile m_file;
    qint64 m_left = 0; ///< of what lies before the last piece
    QByteArray m_last;
};
