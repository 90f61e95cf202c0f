#pragma once

#include <QByteArray>
#include <QString>

namespace platform {
struct XmlOutline;
}

/// An XML file to which records are appended in place: record and closing tag are written over the
/// old closing tag, so that a record costs the same however long the file is, and the file is whole
/// after each one.
///
/// - A file that is missing or empty is begun with the first record, as UTF-8.
/// - What stands behind the element `Errors` stays behind it.
/// - A file in another encoding than UTF-8 is rewritten in UTF-8 before its first new record.
/// - A kill of the program or of the machine in the midst of a write may leave the last record cut
///   off. The next record takes its place.
/// - A file that is broken in another way, or has no element `Errors`, stays as it is, byte for
///   byte, and is given no records. Neither is one that turns out to be so after it was edited.
class ErrorLogFile
{
public:
    /// Looks through the file that is there.
    explicit ErrorLogFile(QString path);

    const QString &path() const { return m_path; }
    /// Appends an `Error` element. Throws Failure; the file is then as it was, and the record waits
    /// for the next call. At most about 1 MiB waits, the oldest; what comes on top is lost.
    void append(const QByteArray &record);
    /// How many records there are: in the file as it is now, also after somebody has edited or
    /// deleted it, and waiting. Throws Failure.
    int recordCount();

private:
    enum class Use {
        Continued,
        Converted, ///< comes into UTF-8 first
        LeftAlone
    };

    /// What the file ends in, and what a record makes of it.
    struct End
    {
        Use use = Use::Continued;
        qint64 position = 0;    ///< the file up to here stays
        QByteArray old = {};    ///< what the file has from there on
        QByteArray before = {}; ///< what comes between there and the record
        QByteArray after = {};  ///< what comes behind the record
        int records = 0;        ///< in the file
    };

    QByteArray readFrom(qint64 position) const;
    bool hasKnownSize() const;
    bool isAsKnown() const;
    End look() const;
    End endOfWhole(const platform::XmlOutline &outline, qint64 size) const;
    End endOfBroken(const platform::XmlOutline &outline, qint64 size) const;
    void convert() const;
    void write(const QByteArray &content) const;

    static constexpr qint64 Unknown = -1;

    QString m_path;
    End m_end{.position = Unknown};
    QByteArray m_waiting;
    int m_waitingCount = 0;
};
