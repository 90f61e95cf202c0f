#pragma once

#include "app/Program.h"
#include "support/RootTest.h"

#include <QtWidgets/QtWidgets>

/// Gives a test the whole tool, not yet started.
class ToolTest : public RootTest<Program>
{
protected:
    ctlGRServer &server() const { return root->Server(); }
    /// On the selected tab, else wherever it is: names recur on other tabs.
    template <typename Widget>
    Widget *child(const char *name) const
    {
        const QString wanted = QString::fromLatin1(name);
        const QWidget &window = *root->MainWindow();
        const auto *const tabs = window.findChild<QTabWidget *>(u"tabMain"_s);
        auto *const here = tabs->currentWidget()->findChild<Widget *>(wanted);
        return here != nullptr ? here : window.findChild<Widget *>(wanted);
    }
};
