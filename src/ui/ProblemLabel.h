#pragma once

#include <QLabel>

/// Tells why something does not work: wrapped, with a warning sign before it. There is nothing of
/// it while all is well.
class ProblemLabel : public QLabel
{
public:
    explicit ProblemLabel(QWidget *parent = nullptr);

    /// An empty text is no problem.
    void tell(const QString &problem);

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void makeRoomForSign();
    int signSize() const;
};
