#include "core/ErrorLogFile.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/Failure.h"
#include "platform/Machine.h"
#include "platform/XmlDocument.h"
#include "platform/XmlOutline.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *Element = "Errors";
const QByteArray Begin = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Errors>"_ba;
const QByteArray ClosingTag = "</Errors>"_ba;
const QByteArray RecordBegin = "<Error DateTime="_ba;
const QByteArray RecordEnd = "</Error>"_ba;
const QByteArray EmptyTagEnd = "/>"_ba;
const QByteArray LastLine = ClosingTag + '\n';

constexpr qsizetype MostWaiting = 1 << 20;
/// What waited and a record: no more is written at once.
constexpr qsizetype LongestWrite = 2 * MostWaiting;

/// Whether what follows the last whole record can be an unfinished write: the begin of a record,
/// perhaps over a part of the old last line, or the begin of that line.
bool isCutOff(QByteArray tail)
{
    while (tail.endsWith('\0')) {
        tail.chop(1); // the file has its new size already, and not yet its content
    }
    for (qsizetype written = 0; written < LastLine.size(); ++written) {
        if (tail == RecordBegin.first(written) + LastLine.sliced(written)) {
            return true;
        }
    }
    const qsizetype next = tail.indexOf('<', 1);
    const bool ends = next < 0 || RecordEnd.startsWith(tail.sliced(next));
    return LastLine.startsWith(tail) || RecordBegin.startsWith(tail) ||
           (tail.startsWith(RecordBegin) && ends);
}

} // namespace

ErrorLogFile::ErrorLogFile(QString path) : m_path(std::move(path))
{
    skipFailure([this] { m_end = look(); });
}

void ErrorLogFile::append(const QByteArray &record)
{
    if (m_waiting.size() < MostWaiting) {
        m_waiting += record;
        ++m_waitingCount;
    }
    if (!isAsKnown()) {
        m_end = look();
    }
    if (m_end.use == Use::Converted) {
        convert();
        m_end = look();
    }
    if (m_end.use == Use::Continued) {
        write(m_end.before + m_waiting + m_end.after);
        m_end.position += m_end.before.size() + m_waiting.size();
        m_end.before.clear();
        m_end.old = m_end.after;
        m_end.records += m_waitingCount;
    }
    m_waiting.clear();
    m_waitingCount = 0;
}

int ErrorLogFile::recordCount()
{
    if (!hasKnownSize()) {
        m_end = look();
    }
    return m_end.records + m_waitingCount;
}

QByteArray ErrorLogFile::readFrom(qint64 position) const
{
    QFile file(m_path);
    QByteArray content;
    if (file.open(QIODevice::ReadOnly) && file.seek(position)) {
        content = file.readAll();
    }
    if (file.error() != QFileDevice::NoError) {
        throw platform::fileFailure(file);
    }
    return content;
}

bool ErrorLogFile::hasKnownSize() const
{
    return QFileInfo(m_path).size() == m_end.position + m_end.old.size();
}

/// The operator may have deleted or edited the file.
bool ErrorLogFile::isAsKnown() const
{
    return hasKnownSize() && (m_end.old.isEmpty() || readFrom(m_end.position) == m_end.old);
}

ErrorLogFile::End ErrorLogFile::look() const
{
    const qint64 size = QFileInfo(m_path).size();
    if (size == 0) {
        return {.before = Begin, .after = LastLine};
    }
    const platform::XmlOutline outline = platform::outlineXml(m_path, Element);
    End end = outline.wellFormed ? endOfWhole(outline, size) : endOfBroken(outline, size);
    end.records = outline.children;
    return end;
}

ErrorLogFile::End ErrorLogFile::endOfWhole(const platform::XmlOutline &outline, qint64 size) const
{
    if (!outline.found) {
        return {.use = Use::LeftAlone, .position = size};
    }
    if (outline.inUtf8) {
        const qint64 start = outline.end - ClosingTag.size();
        const QByteArray tail = readFrom(start);
        if (tail.startsWith(ClosingTag)) {
            return {.position = start, .old = tail, .after = tail};
        }
        const QByteArray rest = tail.sliced(ClosingTag.size());
        if (tail.first(ClosingTag.size()).endsWith(EmptyTagEnd)) {
            return {.position = outline.end - EmptyTagEnd.size(),
                    .old = EmptyTagEnd + rest,
                    .before = ">",
                    .after = ClosingTag + rest};
        }
    }
    return {.use = Use::Converted, .position = size};
}

ErrorLogFile::End ErrorLogFile::endOfBroken(const platform::XmlOutline &outline, qint64 size) const
{
    const qint64 position = outline.lastChildEnd;
    if (outline.isRoot && outline.inUtf8 && position > 0 && size - position <= LongestWrite) {
        const QByteArray tail = readFrom(position);
        if (isCutOff(tail)) {
            return {.position = position, .old = tail, .after = LastLine};
        }
    }
    return {.use = Use::LeftAlone, .position = size};
}

void ErrorLogFile::convert() const
{
    if (auto document = platform::XmlDocument::load(m_path)) {
        document->useUtf8();
        platform::replaceFile(gRoot->Machine().files, m_path, document->toBytes(),
                              platform::Durability::SurvivesCrash);
    }
}

/// Without a flush, which would wait for the disk at every record.
void ErrorLogFile::write(const QByteArray &content) const
{
    platform::Files &files = gRoot->Machine().files;
    if (m_end.position == 0) {
        platform::replaceFile(files, m_path, content, platform::Durability::SurvivesCrash);
    } else if (!QFileInfo(m_path).isWritable()) { // another user's; a copy is ours
        platform::replaceFile(files, m_path, readFrom(0).first(m_end.position) + content,
                              platform::Durability::SurvivesCrash);
    } else {
        files.replaceEnd(m_path, m_end.position, m_end.old, content);
    }
}
