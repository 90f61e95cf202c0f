#include "platform/DesktopMessageBoxes.h"

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

class DesktopMessageBoxesTest : public testing::Test
{
protected:
    using Box = std::pair<QString, int>; ///< text and style
    /// The text of an open box, what comes meanwhile, and the button that is pressed then.
    struct Turn
    {
        QString text;
        std::vector<Box> meanwhile;
        QMessageBox::StandardButton answer;
    };

    void show(const Box &box)
    {
        ++m_come;
        const int button = boxes.show(box.first, u"Title"_s, box.second);
        ended.append(box.first + QString::number(button));
    }
    /// Shows the boxes from the event loop, as timers and sockets do, the first one at once.
    void run(const std::vector<Turn> &turns, const Box &first)
    {
        auto turn = turns.begin();
        int expected = 0; // to come before the answer
        QTimer operators;
        QObject::connect(&operators, &QTimer::timeout, [&] {
            QWidgetList open = QApplication::topLevelWidgets();
            open.removeIf([](const QWidget *window) { return !window->isVisible(); });
            auto *const box = qobject_cast<QMessageBox *>(open.value(0));
            if (open.size() > 1 || (box && (turn == turns.end() || box->text() != turn->text))) {
                ADD_FAILURE() << "a box is open out of its turn";
                open.last()->close();
            } else if (box && expected == 0) {
                expected = m_come + static_cast<int>(turn->meanwhile.size());
                for (const Box &next : turn->meanwhile) {
                    QTimer::singleShot(0, [this, next] { show(next); });
                }
            } else if (box && m_come == expected) {
                expected = 0;
                box->button((turn++)->answer)->click();
            }
        });
        operators.start(0);
        show(first);
        EXPECT_EQ(turn, turns.end());
    }

    platform::DesktopMessageBoxes boxes;
    QStringList ended; ///< text and button of each, in the order in which the calls returned

private:
    int m_come = 0;
};

TEST_F(DesktopMessageBoxesTest, ComeOneAtATimeAndATextThatIsThereAlreadyOnlyOnce)
{
    constexpr int Asks = platform::RetryCancel;
    run({{u"A"_s, {{u"B"_s, Asks}, {u"A"_s, 0}, {u"B"_s, Asks}, {u"C"_s, 0}}, QMessageBox::Ok},
         {u"C"_s,
          {{u"A"_s, 0}, {u"B"_s, Asks}},
          QMessageBox::Ok}, // A is answered, and so counts anew
         {u"A"_s, {}, QMessageBox::Ok},
         {u"B"_s, {}, QMessageBox::Retry}},
        {u"A"_s, platform::OkOnly});
    EXPECT_EQ(ended.join(u' '), u"A1 B2 B2 A1 C1 B4 A1"_s);
    run({{u"A"_s, {}, QMessageBox::Ok}}, {u"A"_s, platform::OkOnly});
}

TEST_F(DesktopMessageBoxesTest, ABoxThatMayAnswersItselfOnceItsTimeIsUp)
{
    platform::DesktopMessageBoxes impatient(std::chrono::milliseconds(1));
    using namespace platform;
    EXPECT_EQ(impatient.show(u"A"_s, u"Title"_s, RetryCancel | RetriesAlone), RetryButton);
    EXPECT_EQ(impatient.show(u"A"_s, u"Title"_s, RetryCancel | CancelsAlone), CancelButton);
    EXPECT_EQ(impatient.show(u"A"_s, u"Title"_s, AcceptsAlone), OkButton);
}

TEST_F(DesktopMessageBoxesTest, ALongPathIsWrappedAndCopiedAsItIs)
{
    const QString path = u"/folder"_s + QString(400, u'ä');
    QTimer::singleShot(0, [&] {
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_TRUE(QTest::qWaitForWindowActive(box));
        EXPECT_LT(box->width(), 640);
        auto *const label = box->findChild<QLabel *>(u"qt_msgbox_label"_s);
        EXPECT_GT(label->height(), 3 * label->fontMetrics().height());
        label->setSelection(0, static_cast<int>(label->text().size()));
        QTest::keyClick(label, Qt::Key_C, Qt::ControlModifier);
        box->close();
    });
    boxes.show(u"No folder "_s + path, u"Title"_s, platform::OkOnly);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"No folder "_s + path);
}

TEST_F(DesktopMessageBoxesTest, ShowPlainTextWithIconAndButtonsAndClosingIsOkOrCancel)
{
    using Shown = QMessageBox;
    const std::tuple<int, Shown::Icon, Shown::StandardButtons, int> rows[] = {
        {platform::OkOnly, Shown::NoIcon, Shown::Ok, platform::OkButton},
        {platform::InformationIcon, Shown::Information, Shown::Ok, platform::OkButton},
        {platform::RetryCancel + platform::StopIcon, Shown::Critical, Shown::Retry | Shown::Cancel,
         platform::CancelButton}};
    for (const auto &row : rows) {
        QTimer::singleShot(0, [&] {
            auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->windowTitle(), u"Title"_s);
            EXPECT_EQ(box->text(), u"<b>\n&"_s);
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->textInteractionFlags(), Qt::TextSelectableByMouse);
            EXPECT_EQ(box->icon(), std::get<1>(row));
            EXPECT_EQ(box->standardButtons(), std::get<2>(row));
            box->close();
        });
        testing::internal::CaptureStderr();
        EXPECT_EQ(boxes.show(u"<b>\r\n&"_s, u"Title"_s, std::get<0>(row)), std::get<3>(row));
        EXPECT_NE(testing::internal::GetCapturedStderr().find("Title: <b>\n&\n"),
                  std::string::npos);
    }
}
