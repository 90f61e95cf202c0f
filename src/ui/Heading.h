#pragma once

#include <QLabel>

/// A heading: bold and larger than the text around it, whatever size that has.
class Heading : public QLabel
{
public:
    explicit Heading(QWidget *parent);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fitFont();
};
