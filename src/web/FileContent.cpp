#include "web/FileContent.h"

#include "platform/Failure.h"
#include "platform/Files.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 PieceSize = qint64{64} * 1024;

} // namespace

FileContent::FileContent(const QString &path) : m_file(path)
{
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        throw platform::fileFailure(m_file);
    }
    const qint64 size = m_file.size();
    m_left = std::max<qint64>(size - PieceSize, 0);
    m_file.seek(m_left);
    m_last = read(size - m_left);
    m_file.seek(0);
}

QByteArray FileContent::next()
{
    if (m_left == 0) {
        return std::exchange(m_last, {});
    }
    QByteArray piece = read(std::min(m_left, PieceSize));
    m_left -= piece.size();
    return piece;
}

QByteArray FileContent::read(qint64 size)
{
    QByteArray piece(size, Qt::Uninitialized);
    if (m_file.read(piece.data(), size) != size) {
        throw m_file.error() == QFileDevice::NoError
            ? platform::Failure(platform::Failure::PathAccess,
                                u"%1: Shorter than it was"_s.arg(m_file.fileName()))
            : platform::fileFailure(m_file);
    }
    return piece;
}
