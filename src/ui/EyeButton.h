#pragma once

#include <QToolButton>

/// The eye in a box with a password, in the colour of its text; struck out while the text is to be
/// seen.
class EyeButton : public QToolButton
{
public:
    explicit EyeButton(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
};
