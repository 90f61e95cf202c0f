#include "web/clsWebServerRequest.h"

#include "core/basTraps.h"
#include "core/basUtilities.h"
#include "platform/Failure.h"

using namespace Qt::StringLiterals;

namespace {

constexpr Module Here{"clsWebServerRequest", "None", /*byStrangers=*/true};

/// The error log is no place for whatever anybody sends.
constexpr qsizetype LongestNameTold = 64;

constexpr QLatin1String LineEnd = "\r\n"_L1;
constexpr QLatin1String HeadersEnd = "\r\n\r\n"_L1;

/// Where a text is found; a request without it is broken off.
qsizetype indexOf(const QString &text, QLatin1String wanted, qsizetype from, const char *what)
{
    const qsizetype index = text.indexOf(wanted, from);
    if (index < 0) {
        throw platform::Failure(platform::Failure::InvalidCall,
                                u"The request has no %1"_s.arg(QLatin1String(what)));
    }
    return index;
}

clsWebServerRequest::RequestMethod methodOf(const QString &requestLine)
{
    if (requestLine.startsWith("GET "_L1)) {
        return clsWebServerRequest::Get;
    }
    return requestLine.startsWith("POST"_L1) ? clsWebServerRequest::Post
                                             : clsWebServerRequest::Other;
}

QString decoded(QString text)
{
    return fnParseURLValue(text.replace(u'+', u' '));
}

QString withoutLineEnds(QString text)
{
    while (text.endsWith(u'\r') || text.endsWith(u'\n')) {
        text.chop(1);
    }
    return text;
}

} // namespace

void clsWebServerRequest::ParseRequest(const QString &text)
{
    trap(Here("ParseRequest"), [&] {
        const qsizetype lineEnd = indexOf(text, LineEnd, 0, "line end");
        const QString requestLine = text.left(lineEnd);
        m_method = methodOf(requestLine);
        const qsizetype first = indexOf(requestLine, " "_L1, 0, "target");
        const qsizetype second = indexOf(requestLine, " "_L1, first + 2, "end of its target");
        m_uri = requestLine.mid(first + 1, second - first - 1);
        // From there on, since there may be no headers.
        const qsizetype headersEnd = indexOf(text, HeadersEnd, lineEnd, "end of its headers");
        fnParseFormFields(text.mid(headersEnd + HeadersEnd.size()));
    });
}

void clsWebServerRequest::fnParseFormFields(const QString &body)
{
    trap(Here("fnParseFormFields"), [&] {
        m_values.clear();
        m_names.clear();
        qsizetype position = 0;
        qsizetype equals = body.indexOf(u'=');
        while (equals >= 0) {
            const qsizetype ampersand = body.indexOf(u'&', position);
            const QString value =
                ampersand < 0 ? withoutLineEnds(body.mid(equals + 1))
                              : body.mid(equals + 1, qMax<qsizetype>(ampersand - equals - 1, 0));
            if (!value.isEmpty()) {
                add(decoded(body.mid(position, equals - position)), decoded(value));
            }
            if (ampersand < 0) {
                return;
            }
            position = ampersand + 1;
            // A piece without "=" leaves the one of a later piece; searching it again for every
            // such piece would take quadratic time.
            if (equals < position) {
                equals = body.indexOf(u'=', position);
            }
        }
    });
}

void clsWebServerRequest::add(const QString &name, const QString &value)
{
    const QString key = name.toCaseFolded();
    if (m_values.contains(key)) {
        throw platform::Failure(
            platform::Failure::DuplicateKey,
            u"The field \"%1\" is posted twice"_s.arg(name.left(LongestNameTold)));
    }
    m_values.insert(key, value);
    m_names.append(name);
}
