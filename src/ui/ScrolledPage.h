#pragma once

#include <QScrollArea>

/// A tab's content, which can be scrolled where the screen is too small for it or its font too
/// large. Looks like no scroll area where it is not.
class ScrolledPage : public QScrollArea
{
public:
    explicit ScrolledPage(QWidget *content);

    QSize sizeHint() const override;
};
