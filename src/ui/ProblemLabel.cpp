#include "ui/ProblemLabel.h"

#include <QPainter>
#include <QStyle>

ProblemLabel::ProblemLabel(QWidget *parent) : QLabel(parent)
{
    constexpr int Gap = 6;
    setTextFormat(Qt::PlainText); // it names files
    setWordWrap(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setContentsMargins(signSize() + Gap, 0, 0, 0);
    setMinimumHeight(signSize());
    hide();
}

void ProblemLabel::tell(const QString &problem)
{
    setText(problem);
    setVisible(!problem.isEmpty());
}

void ProblemLabel::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    QPainter painter(this);
    const QRect sign(0, (height() - signSize()) / 2, signSize(), signSize());
    style()->standardIcon(QStyle::SP_MessageBoxWarning).paint(&painter, sign);
}

int ProblemLabel::signSize() const
{
    return fontMetrics().height();
}
