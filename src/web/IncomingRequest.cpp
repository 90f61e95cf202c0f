#include "web/IncomingRequest.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QByteArray HeadersEnd = "\r\n\r\n"_ba;

qsizetype contentLength(const QByteArray &headers)
{
    static const QRegularExpression field(uR"(\r\nContent-Length:[ \t]*(\d{1,9})[ \t]*\r\n)"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    return field.match(QString::fromLatin1(headers)).captured(1).toLongLong();
}

} // namespace

void IncomingRequest::append(const QByteArray &piece)
{
    const qsizetype before = m_data.size();
    m_data += piece;
    if (m_size != Largest) {
        return;
    }
    const qsizetype end =
        m_data.indexOf(HeadersEnd, std::max<qsizetype>(before - HeadersEnd.size() + 1, 0));
    if (end >= 0) {
        const qsizetype body = end + HeadersEnd.size();
        m_size = std::min(body + contentLength(m_data.first(body)), Largest);
    }
}
