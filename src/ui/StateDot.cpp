#include "ui/StateDot.h"

#include "ui/ServerState.h"
#include "ui/StateIcon.h"

#include <QPainter>

StateDot::StateDot(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void StateDot::setHealth(ServerHealth health)
{
    m_health = health;
    setAccessibleName(wordsOf(health));
    update();
}

QSize StateDot::sizeHint() const
{
    const int height = fontMetrics().height();
    return {height, height};
}

void StateDot::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    stateIcon::paint(painter, QRectF(rect()).adjusted(1, 1, -1, -1), m_health);
}
