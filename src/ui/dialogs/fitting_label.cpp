#include "ui/dialogs/fitting_label.h"

#include <QPainter>
#include <QTextLayout>

#include <cmath>

namespace tavrix {

namespace {

constexpr qreal smallestPointSize = 7.0;
constexpr int smallestPixelSize = 9;

} // namespace

QSize FittingLabel::minimumSizeHint() const
{
    const QSize hint = QLabel::minimumSizeHint();
    const int room = 2 * (margin() + frameWidth()) + fontMetrics().averageCharWidth() * 4;
    return {std::min(hint.width(), room), hint.height()};
}

int FittingLabel::textWidth() const
{
    return contentsRect().width() - 2 * margin();
}

QFont FittingLabel::fittedFont(int width) const
{
    QFont fitted = font();
    // Measured unrounded, as the elision measures: a text that rounds down
    // to the width would be cut short.
    auto tooWide = [&] { return QFontMetricsF(fitted).horizontalAdvance(text()) > width; };
    // A font sized in pixels shrinks by the pixel, any other by half a point.
    if (fitted.pixelSize() > 0) {
        while (tooWide() && fitted.pixelSize() > smallestPixelSize)
            fitted.setPixelSize(fitted.pixelSize() - 1);
        return fitted;
    }
    while (tooWide() && fitted.pointSizeF() > smallestPointSize)
        fitted.setPointSizeF(std::max(smallestPointSize, fitted.pointSizeF() - 0.5));
    return fitted;
}

QString FittingLabel::shownText(int width) const
{
    return QFontMetrics(fittedFont(width)).elidedText(text(), Qt::ElideRight, width);
}

void FittingLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawFrame(&painter);
    const int width = textWidth();
    const QRect room = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    painter.setFont(fittedFont(width));
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    painter.setPen(palette().color(group, foregroundRole()));
    painter.drawText(room, int(alignment()) | Qt::TextSingleLine, shownText(width));
}

} // namespace tavrix

namespace tavrix {

qreal WrappingLabel::layOut(QTextLayout &layout, int width) const
{
    QString shown = text();
    shown.replace(QLatin1Char('\n'), QChar::LineSeparator);
    layout.setText(shown);
    layout.setFont(font());
    QTextOption option(alignment());
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    const qreal leading = QFontMetricsF(font()).leading();
    qreal height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(1, width));
        height += leading;
        line.setPosition(QPointF(0, height));
        height += line.height();
    }
    layout.endLayout();
    return height;
}

int WrappingLabel::heightForWidth(int width) const
{
    QTextLayout layout;
    return int(std::ceil(layOut(layout, width - frameExtra()))) + frameExtra();
}

QSize WrappingLabel::minimumSizeHint() const
{
    const int width = fontMetrics().averageCharWidth() * 12 + frameExtra();
    return {width, std::max(minimumHeight(), fontMetrics().lineSpacing() + frameExtra())};
}

QSize WrappingLabel::sizeHint() const
{
    const int width = fontMetrics().averageCharWidth() * 40 + frameExtra();
    return {width, std::max(minimumHeight(), heightForWidth(width))};
}

void WrappingLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawFrame(&painter);
    const QRect room = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    QTextLayout layout;
    layOut(layout, room.width());
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    painter.setPen(palette().color(group, foregroundRole()));
    layout.draw(&painter, room.topLeft());
}

} // namespace tavrix
