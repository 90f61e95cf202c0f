#include "support/ToolTest.h"

#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest/QTest>

namespace {

struct Calls
{
    int fills = 0;
    int updates = 0;
    bool dirty = false;
};

class CountingPanel final : public ctlPanel
{
public:
    explicit CountingPanel(Calls &calls) : m_calls(calls) {}
    void FillFields() override { ++m_calls.fills; }
    void PushUpdate() override { ++m_calls.updates; }
    bool Dirty() const override { return m_calls.dirty; }

private:
    Calls &m_calls;
};

class frmMainTest : public ToolTest
{
protected:
    frmMainTest()
    {
        root->Start();
        for (std::size_t tab = 0; tab < frmMain::TabCount; ++tab) {
            window().HostPanel(static_cast<frmMain::Tab>(tab),
                               std::make_unique<CountingPanel>(calls.at(tab)));
        }
    }
    frmMain &window() const { return *root->MainWindow(); }
    template <typename Widget>
    Widget *child(const char *name) const
    {
        return window().findChild<Widget *>(QString::fromLatin1(name));
    }

    std::array<Calls, frmMain::TabCount> calls;
};

} // namespace

TEST_F(frmMainTest, PassesItsCallsToThePanelOfTheSelectedTab)
{
    auto *const tabs = child<QTabWidget>("tabMain");
    const std::array<const char *, frmMain::TabCount> captions{
        "Main",           "System",           "Server Control", "Server Options",
        "Replay Options", "Status Reporting", "Stats"};
    for (int tab = 0; tab < tabs->count(); ++tab) {
        calls = {};
        EXPECT_EQ(tabs->tabText(tab), QString::fromLatin1(captions.at(static_cast<size_t>(tab))));
        QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {},
                          tabs->tabBar()->tabRect(tab).center());
        ASSERT_EQ(tabs->currentIndex(), tab);
        window().PushUpdate();
        window().FillFields();
        for (int other = 0; other < tabs->count(); ++other) {
            const Calls &made = calls.at(static_cast<size_t>(other));
            // A click on the tab that is selected already changes nothing.
            const int fills = other != tab ? 0 : (tab == 0 ? 1 : 2);
            EXPECT_EQ(made.fills, fills) << tab << other;
            EXPECT_EQ(made.updates, other == tab ? 1 : 0) << tab << other;
        }
    }
}

TEST_F(frmMainTest, UnsavedEditsSurviveAChangeOfTabs)
{
    calls[frmMain::ServerOptions].dirty = true;
    child<QTabWidget>("tabMain")->setCurrentIndex(frmMain::ServerOptions);
    EXPECT_EQ(calls[frmMain::ServerOptions].fills, 0);
    window().FillFields();
    EXPECT_EQ(calls[frmMain::ServerOptions].fills, 1);
}

TEST_F(frmMainTest, ShowsItsVersionAndEndsTheProgramByItsButtonAndItsCloseBox)
{
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Zebek Suite"));
    EXPECT_EQ(child<QLabel>("lblVersion")->text(), QStringLiteral("Zebek Suite v1.10.014"));

    QTest::mouseClick(child<QPushButton>("cmdQuit"), Qt::LeftButton);
    EXPECT_EQ(fake.processEnd.ends, 1);
    EXPECT_EQ(root->Options(), nullptr);

    newTool();
    root->Start();
    window().close();
    EXPECT_EQ(fake.processEnd.ends, 2);
}

TEST_F(frmMainTest, TheThanksLineOpensThePictureWindow)
{
    auto *const thanks = child<QLabel>("Label2");
    QTest::mouseClick(thanks, Qt::LeftButton, {}, thanks->rect().center());
    auto *const close = child<QPushButton>("cmdClose");
    ASSERT_NE(close, nullptr);
    EXPECT_TRUE(close->window()->isVisible());
    QTest::mouseClick(close, Qt::LeftButton);
    QTest::qWait(0);
    EXPECT_EQ(child<QPushButton>("cmdClose"), nullptr);
}
