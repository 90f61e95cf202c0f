#include "ui/ScrolledPage.h"

ScrolledPage::ScrolledPage(QWidget *content)
{
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus); // it follows the focus of what is in it
    content->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}

/// Qt's own is that of a small window at most.
QSize ScrolledPage::sizeHint() const
{
    return widget()->sizeHint();
}
