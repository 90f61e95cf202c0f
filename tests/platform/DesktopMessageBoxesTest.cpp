#include "platform/DesktopMessageBoxes.h"

#include "support/ToolTest.h"

using namespace platform;

/// Answers the boxes with the buttons laid ready, each after it has been looked at a few times.
class DesktopMessageBoxesTest : public testing::Test
{
protected:
    DesktopMessageBoxesTest()
    {
        QObject::connect(&timer, &QTimer::timeout, [this] { look(); });
        timer.start(10);
    }
    void look()
    {
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (box != nullptr && ++looks % 5 == 0) {
            shown.append(box->text());
            box->button(answers.takeFirst())->click();
        }
    }

    QTimer timer;
    int looks = 0;
    QList<QMessageBox::StandardButton> answers;
    QStringList shown;
    DesktopMessageBoxes boxes;
};

TEST_F(DesktopMessageBoxesTest, ComeOneAtATimeAndNeverTwice)
{
    answers = {QMessageBox::Cancel, QMessageBox::Retry};
    QTimer::singleShot(0, [this] {
        EXPECT_EQ(boxes.show(u"first"_s, {}, RetryCancel), CancelButton);
        EXPECT_EQ(boxes.show(u"first"_s, {}, OkOnly), OkButton);
        EXPECT_EQ(boxes.show(u"second"_s, {}, RetryCancel), RetryButton);
    });
    EXPECT_EQ(boxes.show(u"first"_s, {}, RetryCancel), CancelButton);
    EXPECT_EQ(shown, (QStringList{u"first"_s, u"second"_s}));
}
