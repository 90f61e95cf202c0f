#include "support/ToolTest.h"

class frmMainTest : public ToolTest
{
protected:
    using enum frmMain::Tab;

    frmMainTest()
    {
        startIdle();
        EXPECT_TRUE(QTest::qWaitForWindowActive(root->MainWindow()));
    }

    QTabWidget &tabs() const { return *child<QTabWidget>("tabMain"); }
    static void turnWheelUp(QWidget &control)
    {
        const QPoint place = control.rect().center();
        QWheelEvent event(place, control.mapToGlobal(place), {}, {0, 120}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&control, &event);
    }
    static void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
};

TEST_F(frmMainTest, KeysTurnTheTabsSaveAndQuit)
{
    tabs().setFocus();
    key(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(tabs().currentIndex(), Stats);
    for (const frmMain::Tab tab : {Main, System, ServerControl, ServerOptions}) {
        key(Qt::Key_PageDown, Qt::ControlModifier);
        EXPECT_EQ(tabs().currentIndex(), tab);
    }
    auto *const name = child<QLineEdit>("txtName");
    name->setFocus();
    key(Qt::Key_X);
    EXPECT_EQ(name->text(), u"x"_s);
    key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return read(u"options.xml"_s).contains("<MPGameName>x</MPGameName>"); }));
    EXPECT_TRUE(name->hasFocus());
    key(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return fake.processEnd.ends == 1; }));
}

TEST_F(frmMainTest, TheWheelActsOnlyOnWhatHasTheFocus)
{
    tabs().setCurrentIndex(ServerControl);
    auto *const box = child<QLineEdit>("txtServerTimeout");
    auto *const scroll = child<QScrollBar>("vscrServerTimeout");
    QWidget *const wheeled[] = {box, scroll, tabs().tabBar()};
    const auto turnOnAll = [&] {
        const QString number = box->text();
        QString changed;
        for (QWidget *const control : wheeled) {
            const QString before = box->text() + QString::number(tabs().currentIndex());
            turnWheelUp(*control);
            changed += before == box->text() + QString::number(tabs().currentIndex()) ? u'-' : u'+';
        }
        EXPECT_GE(box->text().toInt(), number.toInt());
        return changed;
    };
    child<QCheckBox>("chkAutoStartGRServer")->setFocus();
    EXPECT_EQ(turnOnAll(), u"---"_s);
    QTest::mouseClick(scroll, Qt::LeftButton, {}, {scroll->width() / 2, 2});
    EXPECT_TRUE(box->hasFocus());
    EXPECT_EQ(turnOnAll(), u"++-"_s);
    tabs().tabBar()->setFocus();
    EXPECT_EQ(turnOnAll(), u"--+"_s);
}

TEST_F(frmMainTest, ALinkIsOneStopOfTheTabKeyShowsItAndIsFollowedByTheKeyboard)
{
    tabs().setCurrentIndex(ReplayOptions);
    for (const char *name : {"lblReplayDirectory", "Label2"}) {
        auto *const link = child<QWidget>(name);
        const QImage without = link->grab().toImage();
        EXPECT_EQ(without.pixel(5, 0), without.pixel(5, 1)) << "no frame";
        link->setFocus();
        key(Qt::Key_Backtab, Qt::ShiftModifier);
        QWidget *const before = QApplication::focusWidget();
        EXPECT_NE(before, link);
        key(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), link);
        EXPECT_NE(link->grab().toImage(), without);
        key(Qt::Key_Tab);
        EXPECT_NE(QApplication::focusWidget(), link);
        EXPECT_NE(QApplication::focusWidget(), before);
    }
    for (const Qt::Key follows : {Qt::Key_Return, Qt::Key_Enter}) {
        child<QWidget>("Label2")->setFocus();
        key(Qt::Key_X);
        EXPECT_EQ(root->MainWindow()->findChild<QPushButton *>(u"cmdClose"_s), nullptr);
        key(follows);
        auto *const close = root->MainWindow()->findChild<QPushButton *>(u"cmdClose"_s);
        ASSERT_TRUE(close != nullptr && close->isVisible());
        close->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(frmMainTest, AFolderOfAnyLengthIsShownWholeAndNeverWidensTheWindow)
{
    const QString folder = u'/' + QString(400, u'x') + u"&y"_s;
    root->Options()->ReplayFolder.Let(folder);
    tabs().setCurrentIndex(ReplayOptions);
    QCoreApplication::processEvents();
    const auto *const link = child<QWidget>("lblReplayDirectory");
    EXPECT_EQ(link->accessibleName(), folder);
    EXPECT_GE(link->width() * (link->height() / link->fontMetrics().height()),
              link->fontMetrics().horizontalAdvance(link->accessibleName()));
    EXPECT_LT(root->MainWindow()->minimumSizeHint().width(), 500);
}

TEST_F(frmMainTest, APasswordIsToBeSeenWhileItsEyeIsPressedUntilTheTabIsLeft)
{
    for (const frmMain::Tab tab : {System, ServerOptions}) {
        tabs().setCurrentIndex(tab);
        auto *const box = child<QLineEdit>("txtPassword");
        const auto shown = [&](const QString &text) { return box->displayText() == text; };
        box->setFocus();
        key(Qt::Key_W);
        EXPECT_FALSE(shown(u"w"_s));
        key(Qt::Key_Tab); // to its eye
        key(Qt::Key_Space);
        EXPECT_TRUE(shown(u"w"_s));
        tabs().setCurrentIndex(Main);
        EXPECT_FALSE(shown(u"w"_s));
    }
    EXPECT_EQ(root->Options()->AdminPassword(), u"w"_s);
}

TEST_F(frmMainTest, TheWindowComesBackWhereItWasUnlessNoScreenIsThere)
{
    const auto place = [this](const QPoint &position) {
        root->MainWindow()->setGeometry({position, QSize(640, 500)});
        root->MainWindow()->close();
        newTool();
        startIdle();
        return root->MainWindow()->geometry();
    };
    const int screen = root->MainWindow()->screen()->availableSize().width();
    EXPECT_GE(tabs().tabBar()->width(), qMin(tabs().tabBar()->sizeHint().width(), screen - 50))
        << "at first";
    EXPECT_EQ(place({70, 60}), QRect(70, 60, 640, 500));
    EXPECT_TRUE(root->MainWindow()->screen()->geometry().intersects(place({9000, 9000})));
}
