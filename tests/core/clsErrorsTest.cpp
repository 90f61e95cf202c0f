#include "core/basTraps.h"
#include "support/RootTest.h"
#include "support/system.h"

using clsErrorsTest = ServicesTest;

static void record(const QString &description, int number = 5)
{
    gRoot->Errors()->RecordError(u"M"_s, u"R"_s, u"None"_s, number, description);
}

static QByteArray oneRecord(const QByteArray &description)
{
    return "<Error DateTime=\"2026-03-14 15:09:26\" Module=\"M\" Routine=\"R\" ID=\"None\" "
           "ErrorNo=\"5\">" +
           description + "</Error>";
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
    EXPECT_EQ(root->Errors()->count(), 2) << "of the run before";
    record(u"third"_s);
    EXPECT_EQ(recordCount(), 3);
    EXPECT_EQ(root->Errors()->count(), 3);

    // The operator deletes or edits the log meanwhile.
    QFile::remove(path(ErrorLog));
    EXPECT_EQ(root->Errors()->count(), 0);
    record(u"two"_s);
    write(ErrorLog, read(ErrorLog).replace("<Error ", "<Error/><Error "));
    EXPECT_EQ(root->Errors()->count(), 2);
    write(ErrorLog,
          read(ErrorLog).replace("<Error/>", "").replace("two", "other") + "<!-- two -->");
    record(u"three"_s);
    EXPECT_TRUE(read(ErrorLog).endsWith(oneRecord("other") + oneRecord("three") +
                                        "</Errors>\n<!-- two -->"));

    // No description makes it unreadable.
    QString hostile = u"]]>&<![CDATA[<!--\xD800\xFFFFx😀\xDC00"_s;
    for (char16_t code = 0; code < 0x20; ++code) {
        hostile.append(QChar(code));
    }
    gRoot->Errors()->RecordError(hostile, hostile, hostile, 1, hostile);
    startIdle();
    record(u"still here"_s);
    EXPECT_EQ(recordCount(), 4);
    EXPECT_TRUE(read(ErrorLog).contains("x😀"));
}

TEST_F(clsErrorsTest, TheHookIsToldOfARoutinesFailuresOnceAMinute)
{
    root->Start();
    const auto fail = [](const char *routine, const QString &reason) {
        recordFailure({"Module", routine, "ID"}, {5, reason});
    };
    fail("a", u"one\n\x1b two"_s);
    fail("a", u"not told"_s);
    fail("b", QString(2000, u'x'));
    fake.clock.advance(59999);
    fail("a", u"not told"_s);
    fake.clock.advance(1);
    fail("a", u"told"_s);
    const QString event = u"log-error|module=Module|routine=%1|number=5|reason=%2"_s;
    const QStringList told{event.arg(u"a"_s, u"one   two"_s), event.arg(u"b"_s, QString(500, u'x')),
                           event.arg(u"a"_s, u"told"_s)};
    EXPECT_EQ(fake.hooks.events, told);
    const platform::Failure failure(5, u"the hook cannot be run"_s);
    for (const auto &outcome : {std::optional(failure), std::optional(failure),
                                std::optional<platform::Failure>(), std::optional(failure)}) {
        fake.hooks.lastDone(outcome);
    }
    EXPECT_EQ(lastRecord(), u"Hook|tellHook|None|5"_s);
    EXPECT_EQ(recordCount(), 5 + 2) << "again once one has succeeded";
    EXPECT_EQ(fake.hooks.events, told) << "a hook that fails is not told of it";
}

TEST_F(clsErrorsTest, StrangersLeaveSixtyRecordsAMinuteAThousandADayAndRingNobody)
{
    root->Start();
    for (int minute = 1; minute <= 20; ++minute) {
        for (int request = 0; request < 100; ++request) {
            recordFailure({"Module", "Routine", "ID", /*byStrangers=*/true}, {5, {}});
        }
        fake.clock.advance(60000);
        EXPECT_EQ(recordCount(), std::min(60 * minute, 1000) + minute) << "one tells of the rest";
    }
    EXPECT_EQ(fake.hooks.events, QStringList());
    fake.clock.advance(86'400'000);
    recordFailure({"Module", "Routine", "ID", /*byStrangers=*/true}, {5, {}});
    EXPECT_EQ(recordCount(), 1000 + 20 + 1) << "another day";
}

TEST_F(clsErrorsTest, ARecordThatWasCutOffAtAnyByteIsReplacedByTheNext)
{
    root->Start();
    record(u"first"_s);
    const QByteArray first = read(ErrorLog);
    record(u"longer"_s);
    const QByteArray second = read(ErrorLog);
    const QByteArray next = oneRecord("next") + "</Errors>";
    for (qsizetype cut = first.size() - 10; cut < second.size(); ++cut) {
        const QByteArray old = first.mid(cut);
        for (const qsizetype zeros : {qsizetype{0}, second.size() - cut - old.size()}) {
            write(ErrorLog, second.left(cut) + old + QByteArray(zeros, '\0'));
            clsErrors().RecordError(u"M"_s, u"R"_s, u"None"_s, 5, u"next"_s);
            const bool whole = cut >= second.size() - 10; // and the log goes on behind it
            ASSERT_EQ(read(ErrorLog).trimmed(), (whole ? second : first).chopped(10) + next) << cut;
        }
    }
}

TEST_F(clsErrorsTest, AWriteThatFallsShortLeavesTheOldLogAndTheRecordWaits)
{
    root->Start();
    record(u"one"_s);
    const QByteArray before = read(ErrorLog);
    for (qint64 room = 0; room < oneRecord("two").size(); ++room) {
        write(ErrorLog, before);
        if (!limitFileSize(before.size() + room)) {
            GTEST_SKIP();
        }
        record(u"two"_s);
        const QByteArray after = read(ErrorLog);
        limitFileSize(-1);
        ASSERT_EQ(after, before);
        ASSERT_EQ(root->Errors()->count(), 2);
        record(u"three"_s);
        ASSERT_TRUE(read(ErrorLog).endsWith(oneRecord("two") + oneRecord("three") + "</Errors>\n"));
    }
    fake.files.failAt = FailingFiles::Always;
    for (int count = 0; count < 20; ++count) {
        record(QString(qsizetype{100} * 1024, u'x'));
    }
    fake.files.failAt = 0;
    record({});
    EXPECT_EQ(recordCount(), 3 + 11) << "1 MiB waits";
}
