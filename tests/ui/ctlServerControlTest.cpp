#include "support/ToolTest.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTabWidget>
#include <QtTest/QTest>

namespace {

class ctlServerControlTest : public ToolTest
{
protected:
    ctlServerControlTest()
    {
        root->Start();
        child<QTabWidget>("tabMain")->setCurrentIndex(frmMain::ServerControl);
    }

    template <typename Widget>
    Widget *child(const char *name) const
    {
        return root->MainWindow()->findChild<Widget *>(QString::fromLatin1(name));
    }
    clsOptions &options() const { return *root->Options(); }
    QString messages() const
    {
        QStringList texts;
        for (const FakeMessageBoxes::Box &box : fake.boxes.boxes) {
            EXPECT_EQ(box.title, QStringLiteral("Zebek Suite"));
            EXPECT_EQ(box.style, platform::OkOnly);
            texts.append(box.text);
        }
        return texts.join(u'|');
    }
};

} // namespace

TEST_F(ctlServerControlTest, CheckBoxesAndTheirLabelsWriteOnAClickOnly)
{
    const std::pair<const char *, Setting<bool> clsOptions::*> rows[] = {
        {"AutoStartGRServer", &clsOptions::AutoStartGRServer},
        {"AutoRestartGRServer", &clsOptions::AutoRestartGRServer},
        {"AutoRestartOnProcessStop", &clsOptions::AutoRestartOnProcessStop},
    };
    for (const auto &[name, setting] : rows) {
        auto *const box = child<QCheckBox>((QByteArray("chk") + name).constData());
        auto *const label = child<QLabel>((QByteArray("lbl") + name).constData());
        EXPECT_TRUE(box->isChecked());
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
        EXPECT_FALSE((options().*setting)());
        QTest::mouseClick(label, Qt::LeftButton);
        EXPECT_TRUE((options().*setting)());
        QTest::mouseClick(label, Qt::LeftButton);
        QTest::keyClick(box, Qt::Key_Space);
        EXPECT_TRUE((options().*setting)());

        (options().*setting).Let(false);
        root->MainWindow()->FillFields();
        EXPECT_FALSE(box->isChecked());
    }
}

TEST_F(ctlServerControlTest, EveryKeystrokeStoresANumberOrIsTakenBack)
{
    auto *const polling = child<QLineEdit>("txtPollingFreq");
    auto *const scroll = child<QScrollBar>("vscrPollingFreq");
    EXPECT_EQ(polling->text(), QStringLiteral("3000"));
    EXPECT_EQ(scroll->value(), 32767 - 3000);

    polling->selectAll();
    QList<int> stored;
    for (const char key : {'1', '2', '0'}) {
        QTest::keyClick(polling, key);
        stored.append(options().ServerPollingFrequency());
    }
    EXPECT_EQ(stored, (QList<int>{1, 12, 120}));
    EXPECT_EQ(scroll->value(), 32647);
    EXPECT_EQ(messages(), QString());

    polling->selectAll();
    QTest::keyClick(polling, Qt::Key_Delete);
    EXPECT_EQ(messages(), QStringLiteral("Enter a number please"));
    EXPECT_EQ(polling->text(), QStringLiteral("120"));

    fake.boxes.boxes.clear();
    auto *const timeout = child<QLineEdit>("txtServerTimeout");
    timeout->selectAll();
    QTest::keyClicks(timeout, QStringLiteral("65"));
    EXPECT_EQ(messages(), QStringLiteral("Please enter a value between 0 and 64)"));
    EXPECT_EQ(timeout->text(), QStringLiteral("6"));
    EXPECT_EQ(options().ServerTimeout(), 6);
    timeout->setText(QStringLiteral("2.5"));
    EXPECT_EQ(options().ServerTimeout(), 2);

    fake.boxes.boxes.clear();
    for (const char *text : {"-1", "32768", "99999999999", "1e9"}) {
        polling->setText(QString::fromLatin1(text));
        EXPECT_EQ(polling->text(), QStringLiteral("120"));
    }
    EXPECT_EQ(
        messages(),
        QStringList(4, QStringLiteral("Please enter a value between 0 and 32767)")).join(u'|'));
}

TEST_F(ctlServerControlTest, ScrollBarsAreTurnedRoundAndReachableByKeyboard)
{
    auto *const text = child<QLineEdit>("txtServerTimeout");
    auto *const scroll = child<QScrollBar>("vscrServerTimeout");
    EXPECT_EQ(scroll->value(), 34);
    QStyleOptionSlider look;
    look.initFrom(scroll);
    look.orientation = Qt::Vertical;
    look.maximum = scroll->maximum();
    look.sliderPosition = scroll->value();
    const QRect upperArrow = scroll->style()->subControlRect(QStyle::CC_ScrollBar, &look,
                                                             QStyle::SC_ScrollBarSubLine, scroll);
    QTest::mouseClick(scroll, Qt::LeftButton, {}, upperArrow.center());
    EXPECT_EQ(text->text(), QStringLiteral("31"));
    EXPECT_EQ(options().ServerTimeout(), 31);
    QTest::keyClick(text, Qt::Key_Down);
    QTest::keyClick(text, Qt::Key_Down);
    EXPECT_EQ(options().ServerTimeout(), 29);
    QTest::keyClick(text, Qt::Key_PageUp);
    EXPECT_EQ(options().ServerTimeout(), 39);
}

TEST_F(ctlServerControlTest, AStoredValueOutOfRangeIsComplainedAboutOnceAndKept)
{
    options().ServerPollingFrequency.Let(40000);
    root->MainWindow()->FillFields();
    EXPECT_EQ(messages(), QStringLiteral("Please enter a value between 0 and 32767)"));
    QTest::keyClick(child<QLineEdit>("txtPollingFreq"), '1');
    EXPECT_EQ(fake.boxes.boxes.size(), 2U);
    EXPECT_EQ(child<QLineEdit>("txtPollingFreq")->text(), QStringLiteral("40000"));
    EXPECT_EQ(options().ServerPollingFrequency(), 40000);
}

TEST_F(ctlServerControlTest, ArgumentsAndButtonsActAtOnceAndTheStatusFollowsTheHeartbeat)
{
    QTest::keyClicks(child<QLineEdit>("txtServerCommandLineArgs"), QStringLiteral("-x \"y"));
    EXPECT_EQ(options().ServerCommandLineArgs(), QStringLiteral("-x \"y"));

    QTest::mouseClick(child<QPushButton>("cmdStopGRServer"), Qt::LeftButton);
    EXPECT_FALSE(server().Connected());
    fake.clock.advance(500);
    EXPECT_EQ(child<QLabel>("lblServerProcessStatus")->text(), server().ProcessStatusText());
    EXPECT_EQ(child<QLabel>("lblServerNetworkStatus")->text(),
              QStringLiteral("Network Status: Not Monitoring"));

    fake.system.addServer(server().EXEPath());
    QTest::mouseClick(child<QPushButton>("cmdStartGRServer"), Qt::LeftButton);
    EXPECT_TRUE(server().ProcessLocated());
    fake.clock.advance(500);
    EXPECT_TRUE(child<QLabel>("lblServerProcessStatus")
                    ->text()
                    .startsWith(QStringLiteral("GR Process found (ID=")));
}

TEST_F(ctlServerControlTest, EveryInteractiveControlHasANameAndTakesTheFocus)
{
    auto *const tabs = child<QTabWidget>("tabMain");
    int controls = 0;
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        for (QWidget *const widget : root->MainWindow()->findChildren<QWidget *>()) {
            const bool button = qobject_cast<QAbstractButton *>(widget) != nullptr;
            const bool input = qobject_cast<QLineEdit *>(widget) != nullptr;
            const bool scroll = qobject_cast<QScrollBar *>(widget) != nullptr;
            if (!widget->isVisible() || !(button || input || scroll)) {
                continue;
            }
            ++controls;
            QAccessibleInterface *const access = QAccessible::queryAccessibleInterface(widget);
            EXPECT_NE(access->text(QAccessible::Name), QString())
                << widget->objectName().toStdString();
            EXPECT_TRUE(scroll || (widget->focusPolicy() & Qt::TabFocus) != 0)
                << widget->objectName().toStdString();
        }
    }
    EXPECT_GE(controls, 12 + tabs->count() - 1);
}
