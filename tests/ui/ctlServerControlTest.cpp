#include "support/ToolTest.h"

class ctlServerControlTest : public ToolTest
{
protected:
    ctlServerControlTest()
    {
        root->Start();
        child<QTabWidget>("tabMain")->setCurrentIndex(frmMain::ServerControl);
    }

    clsOptions &options() const { return *root->Options(); }
    QString label(const char *name) const { return child<QLabel>(name)->text(); }

    const QString WrongNumber = u"Zebek Suite|0|Please enter a value between 0 and 32767)"_s;
};

TEST_F(ctlServerControlTest, CheckBoxesAndTheirLabelsWriteOnAClickOnly)
{
    const std::pair<const char *, Setting<bool> clsOptions::*> rows[] = {
        {"AutoStartGRServer", &clsOptions::AutoStartGRServer},
        {"AutoRestartGRServer", &clsOptions::AutoRestartGRServer},
        {"AutoRestartOnProcessStop", &clsOptions::AutoRestartOnProcessStop}};
    for (const auto &[name, setting] : rows) {
        auto *const box = child<QCheckBox>((QByteArray("chk") + name).constData());
        auto *const label = child<QLabel>((QByteArray("lbl") + name).constData());
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
        EXPECT_FALSE((options().*setting)());
        QTest::mouseClick(label, Qt::LeftButton, {}, QPoint(9, label->height() / 2));
        EXPECT_TRUE((options().*setting)());
        QTest::keyClick(box, Qt::Key_Space);
        EXPECT_FALSE((options().*setting)());
        (options().*setting).Let(true);
        root->MainWindow()->FillFields();
        EXPECT_TRUE(box->isChecked());
    }
}

TEST_F(ctlServerControlTest, EveryKeystrokeStoresANumberOrIsTakenBack)
{
    auto *const polling = child<QLineEdit>("txtPollingFreq");
    auto *const timeout = child<QLineEdit>("txtServerTimeout");
    auto *const scroll = child<QScrollBar>("vscrPollingFreq");
    EXPECT_EQ(polling->text(), u"3000"_s);
    EXPECT_EQ(scroll->value(), 32767 - 3000);
    polling->selectAll();
    for (const auto &[key, stored] : {std::pair('1', 1), {'2', 12}, {'0', 120}}) {
        QTest::keyClick(polling, key);
        EXPECT_EQ(options().ServerPollingFrequency(), stored);
    }
    EXPECT_EQ(scroll->value(), 32647);
    EXPECT_EQ(fake.boxes.boxes, QStringList());

    polling->selectAll();
    QTest::keyClick(polling, Qt::Key_Delete);
    timeout->selectAll();
    QTest::keyClicks(timeout, u"65"_s);
    EXPECT_EQ(fake.boxes.boxes,
              (QStringList{u"Zebek Suite|0|Enter a number please"_s,
                           u"Zebek Suite|0|Please enter a value between 0 and 64)"_s}));
    EXPECT_EQ(timeout->text(), u"6"_s);
    EXPECT_EQ(options().ServerTimeout(), 6);
    timeout->setText(u"2.5"_s);
    EXPECT_EQ(options().ServerTimeout(), 2);

    fake.boxes.boxes.clear();
    for (const auto text : {"-1"_L1, "32768"_L1, "99999999999"_L1, "1e9"_L1}) {
        polling->setText(text);
        EXPECT_EQ(polling->text(), u"120"_s);
    }
    EXPECT_EQ(fake.boxes.boxes, QStringList(4, WrongNumber));

    // A stored value out of range is complained about once and kept.
    options().ServerPollingFrequency.Let(40000);
    root->MainWindow()->FillFields();
    EXPECT_EQ(fake.boxes.boxes, QStringList(5, WrongNumber));
    QTest::keyClick(polling, '1');
    EXPECT_EQ(fake.boxes.boxes, QStringList(6, WrongNumber));
    EXPECT_EQ(polling->text(), u"40000"_s);
    EXPECT_EQ(options().ServerPollingFrequency(), 40000);
}

TEST_F(ctlServerControlTest, ScrollBarsAreTurnedRoundAndReachableByKeyboard)
{
    auto *const text = child<QLineEdit>("txtServerTimeout");
    child<QScrollBar>("vscrServerTimeout")->triggerAction(QScrollBar::SliderSingleStepSub);
    EXPECT_EQ(text->text(), u"31"_s) << "the upper arrow raises the number";
    for (const auto &[key, stored] : {std::pair(Qt::Key_Down, 30), {Qt::Key_PageUp, 40}}) {
        QTest::keyClick(text, key);
        EXPECT_EQ(options().ServerTimeout(), stored);
    }
}

TEST_F(ctlServerControlTest, ArgumentsAndButtonsActAtOnceAndTheStatusFollowsTheHeartbeat)
{
    QTest::keyClicks(child<QLineEdit>("txtServerCommandLineArgs"), u"-x \"y"_s);
    EXPECT_EQ(options().ServerCommandLineArgs(), u"-x \"y"_s);

    QTest::mouseClick(child<QPushButton>("cmdStopGRServer"), Qt::LeftButton);
    fake.clock.advance(500);
    EXPECT_EQ(label("lblServerProcessStatus"), u"No Process information"_s);
    EXPECT_EQ(label("lblServerNetworkStatus"), u"Network Status: Not Monitoring"_s);

    fake.system.addServer(server().EXEPath());
    QTest::mouseClick(child<QPushButton>("cmdStartGRServer"), Qt::LeftButton);
    fake.clock.advance(500);
    EXPECT_TRUE(label("lblServerProcessStatus").startsWith(u"GR Process found (ID="_s));
}

TEST_F(ctlServerControlTest, EveryInteractiveControlHasANameAndTakesTheFocus)
{
    auto *const tabs = child<QTabWidget>("tabMain");
    int controls = 0;
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        for (QWidget *const widget : root->MainWindow()->findChildren<QWidget *>()) {
            const bool scroll = qobject_cast<QScrollBar *>(widget) != nullptr;
            if (!widget->isVisible() ||
                !(scroll || qobject_cast<QAbstractButton *>(widget) != nullptr ||
                  qobject_cast<QLineEdit *>(widget) != nullptr)) {
                continue;
            }
            ++controls;
            QAccessibleInterface *const access = QAccessible::queryAccessibleInterface(widget);
            EXPECT_TRUE(access->text(QAccessible::Name) != QString() &&
                        (scroll || (widget->focusPolicy() & Qt::TabFocus) != 0))
                << widget->objectName().toStdString();
        }
    }
    EXPECT_GE(controls, 12 + tabs->count() - 1);
}
