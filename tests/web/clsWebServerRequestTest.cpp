#include "web/clsWebServerRequest.h"

#include "support/RootTest.h"

using clsWebServerRequestTest = ServicesTest;

TEST_F(clsWebServerRequestTest, ReadsMethodTargetAndFieldsAndRecordsWhatBreaksOff)
{
    startIdle();
    const QString form = u"POST /x HTTP/1.1\r\nHost: a\r\n\r\n"_s;
    const struct
    {
        QString text;
        int method;
        const char *uri;
        QByteArray fields; ///< name>value, in order
        int records;
    } rows[] = {
        {u"GET / HTTP/1.1\r\nHost: a\r\n\r\n"_s, 0, "/", "", 0},
        {u"POST /x HTTP/1.1\r\n\r\na=1\r\n\r\n"_s, 1, "/x", "a>1", 0}, // no headers
        {u"GET /a?b=c&d HTTP/1.1\r\nHost: a\r\n\r\n"_s, 0, "/a?b=c&d", "", 0},
        {u"PUT / HTTP/1.1\r\nHost: a\r\n\r\n"_s, 32767, "/", "", 0},
        {u" /x HTTP/1.1\r\n\r\n"_s, 32767, "/x", "", 0},
        {u"POSTER /x y\r\nHost: a\r\n\r\na=1"_s, 1, "/x", "a>1", 0},
        {form + u"a=1&b=&c=3"_s, 1, "/x", "a>1 c>3", 0},
        {form + u"x=A+B%2B&n%61me=%E4\r\n\r\n"_s, 1, "/x", "x>A B+ name>\u00E4", 0},
        {form + u"x&a=1"_s, 1, "/x", "a>1", 0},
        {form + u"a=1&b&c"_s, 1, "/x", "a>1", 0},
        {form + u"a=1&A=2&b=3"_s, 1, "/x", "a>1", 1},
        {form + u"a=x%zz%41"_s, 1, "/x", "a>x%zz%41", 1},
        // Half an hour, and so never within the time that a test has, where it is quadratic.
        {form + QString(500000, u'&') + u"a=1"_s, 1, "/x", "a>1", 0},
        {form + u"a&"_s.repeated(250000) + u"a=1"_s, 1, "/x", "a>1", 0},
        {form + u"a="_s + u"%25"_s.repeated(170000), 1, "/x", "a>" + QByteArray(170000, '%'), 1},
        {{}, 0, "", "", 1},
        {u"GET / HTTP/1.1"_s, 0, "", "", 1},
        {u"POST\r\n\r\n"_s, 1, "", "", 1},
        {u"POST  \r\nHost: a\r\n\r\na=1"_s, 1, "", "", 1},
        {u"POST /x HTTP/1.1\r\nHost: a\r\na=1"_s, 1, "/x", "", 1},
    };
    for (const auto &row : rows) {
        const qsizetype before = recordCount();
        clsWebServerRequest request;
        request.ParseRequest(row.text);
        QStringList fields;
        for (const QString &name : request.FieldNames()) {
            fields += name + u'>' + request.FormField(name.toUpper());
        }
        EXPECT_EQ(request.Method(), row.method) << row.text.toStdString();
        EXPECT_EQ(request.File(), QString::fromUtf8(row.uri)) << row.text.toStdString();
        EXPECT_EQ(fields.join(u' ').toUtf8(), row.fields) << row.text.toStdString();
        EXPECT_EQ(recordCount() - before, row.records) << row.text.toStdString();
    }
    EXPECT_EQ(lastRecord(), u"clsWebServerRequest|ParseRequest|None|5"_s);
}
