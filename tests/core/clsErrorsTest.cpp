#include "support/ToolTest.h"

using clsErrorsTest = ToolTest;

static void record(const QString &description, int number = 5)
{
    gRoot->Errors()->RecordError(u"M"_s, u"R"_s, u"None"_s, number, description);
}

TEST_F(clsErrorsTest, EachRecordIsWholeOnDiskWithItsAttributesInOrder)
{
    root->Start();
    EXPECT_FALSE(QFile::exists(path(ErrorLog)));
    record(u"first"_s);
    record(u"zweiter <ü>"_s, -2147483647);
    const QByteArray begin = "<Error DateTime=\"2026-03-14 15:09:26\" Module=\"M\" Routine=\"R\" "
                             "ID=\"None\" ErrorNo=\"";
    EXPECT_EQ(read(ErrorLog), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Errors>" + begin +
                                  "5\">first</Error>" + begin +
                                  "-2147483647\">zweiter &lt;ü&gt;</Error></Errors>\n");
    startIdle();
    record(u"third"_s);
    EXPECT_EQ(recordCount(), 3);
}

TEST_F(clsErrorsTest, AMalformedLogStaysAsItIs)
{
    for (const QByteArray &broken : {QByteArray("<Errors><Error></Errors>"), QByteArray()}) {
        write(ErrorLog, broken);
        startIdle();
        record(u"lost"_s);
        EXPECT_EQ(read(ErrorLog), broken);
    }
}

TEST_F(clsErrorsTest, ARecordThatCannotBeSavedComesWithTheNextOne)
{
    root->Start();
    record(u"one"_s);
    const QByteArray before = read(ErrorLog);
    fake.files.failAt = FailingFiles::Always;
    record(u"two"_s);
    EXPECT_EQ(read(ErrorLog), before);
    fake.files.failAt = 0;
    record(u"three"_s);
    EXPECT_EQ(recordCount(), 3);
}

TEST_F(clsErrorsTest, NoDescriptionMakesTheLogUnreadable)
{
    root->Start();
    QString hostile = u"]]>&<![CDATA[<!--\xD800\xFFFFx😀\xDC00"_s;
    for (char16_t code = 0; code < 0x20; ++code) {
        hostile.append(QChar(code));
    }
    record(hostile);
    gRoot->Errors()->RecordError(hostile, hostile, hostile, 1, hostile);
    startIdle();
    record(u"still here"_s);
    EXPECT_EQ(recordCount(), 3);
    EXPECT_TRUE(read(ErrorLog).contains("x😀"));
}
