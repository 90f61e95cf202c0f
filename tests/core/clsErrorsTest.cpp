#include "support/ToolTest.h"

using clsErrorsTest = ToolTest;

namespace {

const QString FileName = QStringLiteral("ZEBEK_Error.xml");

void record(const QString &description, int number = 5)
{
    gRoot->Errors()->RecordError(QStringLiteral("M"), QStringLiteral("R"), QStringLiteral("None"),
                                 number, description);
}

} // namespace

TEST_F(clsErrorsTest, EachRecordIsWholeOnDiskWithItsAttributesInOrder)
{
    root->Start();
    EXPECT_FALSE(QFile::exists(path(FileName)));
    record(QStringLiteral("first"));
    record(QStringLiteral("zweiter <ü>"), -2147483647);
    EXPECT_EQ(QString::fromUtf8(read(FileName)),
              QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Errors>"
                             "<Error DateTime=\"2026-03-14 15:09:26\" Module=\"M\" Routine=\"R\" "
                             "ID=\"None\" ErrorNo=\"5\">first</Error>"
                             "<Error DateTime=\"2026-03-14 15:09:26\" Module=\"M\" Routine=\"R\" "
                             "ID=\"None\" ErrorNo=\"-2147483647\">zweiter &lt;ü&gt;</Error>"
                             "</Errors>\n"));
    newTool();
    root->Start();
    record(QStringLiteral("third"));
    EXPECT_EQ(recordCount(), 3);
}

TEST_F(clsErrorsTest, AMalformedLogStaysAsItIs)
{
    for (const QByteArray &broken : {QByteArray("<Errors><Error></Errors>"), QByteArray()}) {
        write(FileName, broken);
        newTool();
        root->Start();
        record(QStringLiteral("lost"));
        EXPECT_EQ(read(FileName), broken);
    }
}

TEST_F(clsErrorsTest, ARecordThatCannotBeSavedComesWithTheNextOne)
{
    root->Start();
    record(QStringLiteral("one"));
    const QByteArray before = read(FileName);
    fake.files.failAt = FailingFiles::Always;
    record(QStringLiteral("two"));
    EXPECT_EQ(read(FileName), before);
    fake.files.failAt = 0;
    record(QStringLiteral("three"));
    EXPECT_EQ(recordCount(), 3);
    EXPECT_FALSE(QFile::exists(platform::replacementName(path(FileName))));
}

TEST_F(clsErrorsTest, NoDescriptionMakesTheLogUnreadable)
{
    root->Start();
    QString hostile = QStringLiteral("]]>&<![CDATA[<!--");
    for (char16_t code = 0; code < 0x20; ++code) {
        hostile.append(QChar(code));
    }
    hostile.append(QChar(0xD800)).append(QChar(0xFFFF)).append(QStringLiteral("x😀"));
    hostile.append(QChar(0xDC00));
    record(hostile);
    gRoot->Errors()->RecordError(hostile, hostile, hostile, 1, hostile);

    newTool();
    root->Start();
    record(QStringLiteral("still here"));
    EXPECT_EQ(recordCount(), 3);
    EXPECT_TRUE(QString::fromUtf8(read(FileName)).contains(QStringLiteral("x😀")));
}

TEST_F(clsErrorsTest, ALogOfManyMegabytesIsContinued)
{
    write(
        FileName,
        "<Errors>" +
            QByteArray("<Error ErrorNo='1'>" + QByteArray(200, 'x') + "</Error>").repeated(60000) +
            "</Errors>");
    root->Start();
    record(QStringLiteral("one more"));
    EXPECT_EQ(recordCount(), 60001);
}
