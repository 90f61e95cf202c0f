#pragma once

#include <QCloseEvent>
#include <QLabel>

/// A top-level window with a caption and plain text. What a request to close it means is decided
/// by whoever listens: the window itself stays.
class ServerWindow : public QLabel
{
    Q_OBJECT

public:
    explicit ServerWindow(const QString &caption);

Q_SIGNALS:
    void closeRequested();

protected:
    void closeEvent(QCloseEvent *event) override;
};
