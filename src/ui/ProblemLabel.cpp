#include "ui/ProblemLabel.h"

#include "platform/LineBreaks.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

ProblemLabel::ProblemLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText); // it names files
    setWordWrap(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    makeRoomForSign();
    hide();
}

void ProblemLabel::tell(const QString &problem)
{
    setText(platform::breakable(problem));
    setVisible(!problem.isEmpty());
}

void ProblemLabel::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    QPainter painter(this);
    const QRect sign(0, (height() - signSize()) / 2, signSize(), signSize());
    style()->standardIcon(QStyle::SP_MessageBoxWarning).paint(&painter, sign);
}

void ProblemLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        makeRoomForSign();
    }
}

void ProblemLabel::makeRoomForSign()
{
    constexpr int Gap = 6;
    setContentsMargins(signSize() + Gap, 0, 0, 0);
    setMinimumHeight(signSize());
}

int ProblemLabel::signSize() const
{
    return fontMetrics().height();
}
