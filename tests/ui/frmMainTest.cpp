#include "support/ToolTest.h"

struct NotingPanel final : ctlPanel
{
    explicit NotingPanel(QString &noted) : calls(noted) {}
    void FillFields() override { calls += u"fill "; }
    void PushUpdate() override { calls += u"update "; }
    bool Dirty() const override { return calls == u"dirty "; }

    QString &calls;
};

class frmMainTest : public ToolTest
{
protected:
    frmMainTest()
    {
        root->Start();
        for (std::size_t tab = 0; tab < frmMain::TabCount; ++tab) {
            window().HostPanel(static_cast<frmMain::Tab>(tab),
                               std::make_unique<NotingPanel>(calls.at(tab)));
        }
    }
    frmMain &window() const { return *root->MainWindow(); }

    std::array<QString, frmMain::TabCount> calls;
};

TEST_F(frmMainTest, PassesItsCallsToThePanelOfTheSelectedTabAndSparesUnsavedEdits)
{
    const auto &tabs = *child<QTabWidget>("tabMain");
    const QString captions =
        u"Main|System|Server Control|Server Options|Replay Options|Status Reporting|Stats"_s;
    for (const bool dirty : {false, true}) {
        for (int tab = tabs.count() - 1; tab >= 0; --tab) {
            EXPECT_EQ(tabs.tabText(tab), captions.section(u'|', tab, tab));
            calls.fill(dirty ? u"dirty "_s : QString());
            auto expected = calls;
            expected.at(static_cast<std::size_t>(tab)) +=
                dirty ? u"update fill " : u"fill update fill ";
            QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {},
                              tabs.tabBar()->tabRect(tab).center());
            window().PushUpdate();
            window().FillFields();
            EXPECT_EQ(calls, expected) << tab;
        }
    }
}

TEST_F(frmMainTest, ShowsItsVersionAndItsPictureAndEndsByItsButtonAndItsCloseBox)
{
    EXPECT_EQ(window().windowTitle(), u"Zebek Suite"_s);
    EXPECT_EQ(child<QLabel>("lblVersion")->text(), u"Zebek Suite v1.10.014"_s);
    auto *const thanks = child<QLabel>("Label2");
    QTest::mouseClick(thanks, Qt::LeftButton, {}, thanks->rect().center());
    ASSERT_NE(child<QPushButton>("cmdClose"), nullptr);
    EXPECT_TRUE(child<QPushButton>("cmdClose")->window()->isVisible());
    QTest::mouseClick(child<QPushButton>("cmdClose"), Qt::LeftButton);
    QTest::qWait(0);
    EXPECT_EQ(child<QPushButton>("cmdClose"), nullptr);

    QTest::mouseClick(child<QPushButton>("cmdQuit"), Qt::LeftButton);
    EXPECT_EQ(fake.processEnd.ends, 1);
    EXPECT_EQ(root->Options(), nullptr);
    startIdle();
    window().close();
    EXPECT_EQ(fake.processEnd.ends, 2);
}
