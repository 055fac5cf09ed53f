#include "ui/play/score_glance.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace tavrix {

namespace {

// White on dark green for the thrower, grey on light grey for the other:
// both read at a distance, and they differ in brightness, not only in hue.
const char *const throwingStyle = "QFrame#%1 { background: #14642d; border-radius: 6px; }"
                                  " QLabel { color: white; background: transparent; }";
const char *const waitingStyle = "QFrame#%1 { background: #dcdcdc; border-radius: 6px; }"
                                 " QLabel { color: #505050; background: transparent; }";

// The figures grow with the panel, from what fits beside the board on the
// smallest screen up to a size that stays in proportion on a large one.
constexpr int smallestFigure = 40;
constexpr int largestFigure = 84;

} // namespace

ScoreGlance::ScoreGlance(QWidget *parent)
    : QFrame(parent)
{
    setObjectName(QStringLiteral("ScoreGlance"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    for (int p = 0; p < 2; ++p) {
        auto *panel = new QFrame(this);
        panel->setObjectName(QStringLiteral("p%1Glance").arg(p + 1));
        auto *column = new QVBoxLayout(panel);
        column->setContentsMargins(4, 0, 4, 2);
        column->setSpacing(0);
        figures_[p] = new QLabel(panel);
        figures_[p]->setObjectName(QStringLiteral("p%1BigScore").arg(p + 1));
        details_[p] = new QLabel(panel);
        details_[p]->setObjectName(QStringLiteral("p%1Average").arg(p + 1));
        details_[p]->setToolTip(QStringLiteral("Three-dart average: points scored per dart thrown, times 3"));
        for (QLabel *label : {figures_[p], details_[p]}) {
            label->setAlignment(Qt::AlignCenter);
            label->setTextFormat(Qt::PlainText);
            column->addWidget(label);
        }
        QFont big = figures_[p]->font();
        big.setBold(true);
        big.setPixelSize(smallestFigure);
        figures_[p]->setFont(big);
        QFont bold = details_[p]->font();
        bold.setBold(true);
        details_[p]->setFont(bold);
        panels_[p] = panel;
        row->addWidget(panel, 1);
    }
    markThrower(0);
}

void ScoreGlance::showFigures(int player, const GlanceFigures &figures)
{
    figures_[player - 1]->setText(figures.figure);
    details_[player - 1]->setText(figures.detail);
}

void ScoreGlance::markThrower(int player)
{
    thrower_ = player;
    for (int p = 0; p < 2; ++p) {
        const char *style = p + 1 == player ? throwingStyle : waitingStyle;
        panels_[p]->setStyleSheet(QString::fromLatin1(style).arg(panels_[p]->objectName()));
    }
}

void ScoreGlance::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    // Three digits take about two em; the height follows the width only.
    const int pixels = std::clamp(panels_[0]->width() * 2 / 5, smallestFigure, largestFigure);
    for (QLabel *figure : figures_) {
        if (figure->font().pixelSize() == pixels)
            continue;
        QFont font = figure->font();
        font.setPixelSize(pixels);
        figure->setFont(font);
    }
}

} // namespace tavrix
