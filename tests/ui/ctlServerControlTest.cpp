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

    const QString WrongNumber = u"Zebek Suite|0|Please enter a value between 0 and 32767)"_s;
};

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
    EXPECT_EQ(timeout->cursorPosition(), 1);
    EXPECT_EQ(options().ServerTimeout(), 6);

    fake.boxes.boxes.clear();
    for (const auto refused : {"32768"_L1, "-1"_L1, "1e10"_L1}) {
        polling->setText(refused);
        EXPECT_EQ(polling->text(), u"120"_s);
    }
    EXPECT_EQ(fake.boxes.boxes, QStringList(3, WrongNumber));

    // A stored value out of range is complained about once and kept.
    options().ServerPollingFrequency.Let(40000);
    root->MainWindow()->FillFields();
    EXPECT_EQ(fake.boxes.boxes.size(), 3) << "not before the panel is filled";
    QApplication::processEvents();
    QTest::keyClick(polling, '1');
    EXPECT_EQ(fake.boxes.boxes, QStringList(5, WrongNumber));
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

TEST_F(ctlServerControlTest, TheCursorTellsToWaitWhileTheServerIsStopped)
{
    const auto waits = [] { return QApplication::overrideCursor() != nullptr; };
    bool waited = false;
    fake.system.whileWaiting = [&] { waited = waits(); };
    QTest::mouseClick(child<QPushButton>("cmdStopGRServer"), Qt::LeftButton);
    EXPECT_TRUE(waited);
    EXPECT_FALSE(waits());

    fake.system.startFails = true;
    QTest::mouseClick(child<QPushButton>("cmdStartGRServer"), Qt::LeftButton);
    root->MainWindow()->PushUpdate();
    EXPECT_TRUE(child<QLabel>("lblProblem")->isVisible());
    EXPECT_FALSE(child<QLabel>("lblFooterProblem")->isVisible()) << "once is enough";
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
                widget->parent()->objectName().startsWith(u"qt_scrollarea"_s) || // Qt's own
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
    QWidget *last = root->MainWindow()->previousInFocusChain();
    while (last->focusPolicy() == Qt::NoFocus) {
        last = last->previousInFocusChain();
    }
    EXPECT_EQ(last, child<QPushButton>("cmdQuit"));
}
