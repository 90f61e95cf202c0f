#include "platform/DesktopMessageBoxes.h"

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

class DesktopMessageBoxesTest : public testing::Test
{
protected:
    struct Box
    {
        QString text;
        int style;
    };
    /// What comes while a box of that text is open, and the button that then ends it.
    struct Turn
    {
        QString text;
        std::vector<Box> meanwhile;
        QMessageBox::StandardButton answer;
    };

    void show(const Box &box)
    {
        ++m_come;
        const int button = boxes.show(box.text, u"Title"_s, box.style);
        ended.append(box.text + u' ' + QString::number(button));
    }
    /// Shows the first one, and what each turn has, from the event loop as timers and sockets do.
    void run(const std::vector<Turn> &turns, const Box &first)
    {
        auto turn = turns.begin();
        bool begun = false;
        int expected = m_come + 1;
        QTimer operators;
        QObject::connect(&operators, &QTimer::timeout, [&] {
            QList<QMessageBox *> open;
            for (QWidget *const window : QApplication::topLevelWidgets()) {
                auto *const box = qobject_cast<QMessageBox *>(window);
                if (box != nullptr && box->isVisible()) {
                    open.append(box);
                }
            }
            if (open.isEmpty()) {
                return;
            }
            if (open.size() > 1 || turn == turns.end() || open.first()->text() != turn->text) {
                ADD_FAILURE() << open.last()->text().toStdString() << " is open out of turn";
                open.last()->close();
                return;
            }
            if (!std::exchange(begun, true)) {
                expected += static_cast<int>(turn->meanwhile.size());
                for (const Box &box : turn->meanwhile) {
                    QTimer::singleShot(0, [this, box] { show(box); });
                }
            } else if (m_come == expected) {
                begun = false;
                open.first()->button((turn++)->answer)->click();
            }
        });
        operators.start(0);
        show(first);
        EXPECT_EQ(turn, turns.end());
    }

    platform::DesktopMessageBoxes boxes;
    QStringList ended; ///< "text button" of each, in the order in which the calls returned

private:
    int m_come = 0;
};

TEST_F(DesktopMessageBoxesTest, ComeOneAtATimeAndATextThatIsThereAlreadyOnlyOnce)
{
    constexpr int Asks = platform::RetryCancel;
    run({{u"A"_s, {{u"B"_s, Asks}, {u"A"_s, 0}, {u"B"_s, Asks}, {u"C"_s, 0}}, QMessageBox::Ok},
         {u"C"_s, {{u"A"_s, 0}}, QMessageBox::Ok}, // which is answered, and so counts anew
         {u"A"_s, {}, QMessageBox::Ok},
         {u"B"_s, {}, QMessageBox::Retry}},
        {u"A"_s, platform::OkOnly});
    EXPECT_EQ(ended.join(u", "_s), u"A 1, B 2, A 1, C 1, B 4, A 1"_s);
    run({{u"A"_s, {}, QMessageBox::Ok}}, {u"A"_s, platform::OkOnly});
}

TEST_F(DesktopMessageBoxesTest, ShowPlainTextWithIconAndButtonsAndClosingIsOkOrCancel)
{
    const struct
    {
        int style;
        QMessageBox::Icon icon;
        QMessageBox::StandardButtons buttons;
        int closed;
    } rows[] = {{platform::OkOnly, QMessageBox::NoIcon, QMessageBox::Ok, platform::OkButton},
                {platform::OkOnly + platform::InformationIcon, QMessageBox::Information,
                 QMessageBox::Ok, platform::OkButton},
                {platform::RetryCancel + platform::StopIcon, QMessageBox::Critical,
                 QMessageBox::Retry | QMessageBox::Cancel, platform::CancelButton}};
    for (const auto &row : rows) {
        QTimer::singleShot(0, [&] {
            auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->windowTitle(), u"Title"_s);
            EXPECT_EQ(box->text(), u"<b>\n&"_s);
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->icon(), row.icon);
            EXPECT_EQ(box->standardButtons(), row.buttons);
            box->close();
        });
        EXPECT_EQ(boxes.show(u"<b>\r\n&"_s, u"Title"_s, row.style), row.closed);
    }
}
