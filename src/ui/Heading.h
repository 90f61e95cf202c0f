#pragma once

#include <QLabel>

/// A heading: bold and larger than the desktop's font, whatever size that has.
class Heading : public QLabel
{
public:
    explicit Heading(QWidget *parent);

protected:
    bool event(QEvent *event) override;

private:
    void fitFont();
};
