#include "web/clsWebServerRequest.h"

#include "support/RootTest.h"

using clsWebServerRequestTest = ServicesTest;

TEST_F(clsWebServerRequestTest, ReadsTargetAndFieldsAndRecordsWhatBreaksOff)
{
    startIdle();
    const QString form = u"POST /x HTTP/1.1\r\nHost: a\r\n\r\n"_s;
    // Text, target, fields as name>value in order, and how many records it makes.
    const std::tuple<QString, QString, QString, int> rows[] = {
        {u"GET /a?b=c&d HTTP/1.1\r\nHost: a\r\n\r\n"_s, u"/a?b=c&d"_s, {}, 0},
        {form + u"a=1&b=&c=3"_s, u"/x"_s, u"a>1 c>3"_s, 0},
        {form + u"x=A+B%2B&n%61me=%E4\r\n\r\n"_s, u"/x"_s, u"x>A B+ name>\u00E4"_s, 0},
        {form + u"x&a=1"_s, u"/x"_s, u"a>1"_s, 0},
        {form + u"a=1&A=2&b=3"_s, u"/x"_s, u"a>1"_s, 1},
        {form + u"a=x%zz%41"_s, u"/x"_s, u"a>x%zz%41"_s, 1},
        // Half an hour, and so never within the time that a test has, where it is quadratic.
        {form + QString(500000, u'&') + u"a=1"_s, u"/x"_s, u"a>1"_s, 0},
        {form + u"a&"_s.repeated(250000) + u"a=1"_s, u"/x"_s, u"a>1"_s, 0},
        {form + u"a="_s + u"%25"_s.repeated(170000), u"/x"_s, u"a>"_s + QString(170000, u'%'), 1},
        {{}, {}, {}, 1},
        {u"GET / HTTP/1.1"_s, {}, {}, 1},
        {u"POST  \r\nHost: a\r\n\r\na=1"_s, {}, {}, 1},
        {u"POST /x HTTP/1.1\r\nHost: a\r\na=1"_s, u"/x"_s, {}, 1},
    };
    for (const auto &[text, target, expected, records] : rows) {
        SCOPED_TRACE(text.left(80).toStdString());
        const qsizetype before = recordCount();
        clsWebServerRequest request;
        request.ParseRequest(text);
        QStringList fields;
        for (const QString &name : request.FieldNames()) {
            fields += name + u'>' + request.FormField(name.toUpper());
        }
        EXPECT_EQ(request.File(), target);
        EXPECT_EQ(fields.join(u' '), expected);
        EXPECT_EQ(recordCount() - before, records);
    }
}
