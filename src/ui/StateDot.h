#pragma once

#include "server/ctlGRServer.h"

#include <QWidget>

/// The picture of the game server's health, as high as a line of text.
class StateDot : public QWidget
{
public:
    explicit StateDot(QWidget *parent = nullptr);

    void setHealth(ServerHealth health);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ServerHealth m_health = ServerHealth::Unknown;
};
