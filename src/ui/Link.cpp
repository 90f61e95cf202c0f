#include "ui/Link.h"

#include "ui/drawFocus.h"

#include <QKeyEvent>
#include <QStylePainter>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int Margin = 2;         ///< to the frame that shows the focus
constexpr int WidestHint = 60;    ///< in letters; a longer text is wrapped
constexpr int NarrowestHint = 10; ///< in letters

QRectF layOut(QTextLayout &text, int width)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    text.setTextOption(option);
    text.beginLayout();
    qreal height = 0;
    for (QTextLine line = text.createLine(); line.isValid(); line = text.createLine()) {
        line.setLineWidth(qMax(1, width - 2 * Margin));
        line.setPosition({Margin, Margin + height});
        height += line.height();
    }
    text.endLayout();
    return text.boundingRect();
}

} // namespace

Link::Link(QWidget *parent) : QAbstractButton(parent)
{
    setCursor(Qt::PointingHandCursor);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void Link::setText(const QString &text)
{
    setAccessibleName(text);
    QAbstractButton::setText(QString(text).replace(u'&', u"&&"_s));
    updateGeometry();
}

QRect Link::textRect(int width) const
{
    QTextLayout text(accessibleName(), font());
    const QRectF lines = layOut(text, width);
    qreal widest = 0;
    for (int line = 0; line < text.lineCount(); ++line) {
        widest = qMax(widest, text.lineAt(line).naturalTextWidth());
    }
    return {0, 0, qCeil(widest) + 2 * Margin, qCeil(lines.height()) + 2 * Margin};
}

QSize Link::sizeHint() const
{
    return textRect(fontMetrics().averageCharWidth() * WidestHint).size();
}

QSize Link::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * NarrowestHint, fontMetrics().height() + 2 * Margin};
}

int Link::heightForWidth(int width) const
{
    return textRect(width).height();
}

bool Link::hitButton(const QPoint &position) const
{
    return textRect(width()).contains(position);
}

void Link::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat()) {
            click();
        }
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

void Link::paintEvent(QPaintEvent * /*event*/)
{
    QStylePainter painter(this);
    QFont underlined = font();
    underlined.setUnderline(true);
    QTextLayout text(accessibleName(), underlined);
    layOut(text, width());
    painter.setPen(palette().color(isDown() ? QPalette::LinkVisited : QPalette::Link));
    text.draw(&painter, {});
    if (hasFocus()) {
        drawFocus(painter, *this, textRect(width()));
    }
}
