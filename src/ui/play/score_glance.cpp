#include "ui/play/score_glance.h"

#include "ui/dialogs/fitting_label.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace tavrix {

namespace {

// White on dark green for the thrower, grey on light grey for the other:
// both read at a distance, and they differ in brightness, not only in hue.
// A bust is white on dark red.
const char *const throwingStyle = "QFrame#%1 { background: #14642d; border-radius: 6px; }"
                                  " QLabel { color: white; background: transparent; }";
const char *const bustStyle = "QFrame#%1 { background: #a01818; border-radius: 6px; }"
                              " QLabel { color: white; background: transparent; }";
const char *const waitingStyle = "QFrame#%1 { background: #dcdcdc; border-radius: 6px; }"
                                 " QLabel { color: #505050; background: transparent; }";
const char *const finishStyle = "QLabel#%1 { color: #14642d; }";

// The figures grow with the panel, from what fits beside the board on the
// smallest screen up to a size that stays in proportion on a large one; the
// finish grows with the whole glance, from a size read across a room.
constexpr int smallestFigure = 40;
constexpr int largestFigure = 84;
constexpr int smallestFinish = 24;
constexpr int largestFinish = 48;

void setPixelSize(QLabel *label, int pixels)
{
    if (label->font().pixelSize() == pixels)
        return;
    QFont font = label->font();
    font.setPixelSize(pixels);
    label->setFont(font);
}

} // namespace

ScoreGlance::ScoreGlance(QWidget *parent)
    : QFrame(parent)
{
    setObjectName(QStringLiteral("ScoreGlance"));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    auto *row = new QHBoxLayout;
    row->setSpacing(6);
    for (int p = 0; p < 2; ++p) {
        auto *panel = new QFrame(this);
        panel->setObjectName(QStringLiteral("p%1Glance").arg(p + 1));
        auto *lines = new QVBoxLayout(panel);
        lines->setContentsMargins(4, 2, 4, 2);
        lines->setSpacing(0);
        names_[p] = new FittingLabel(panel);
        names_[p]->setObjectName(QStringLiteral("p%1GlanceName").arg(p + 1));
        // "BUST" is wider than three digits: it shrinks to its room.
        figures_[p] = new FittingLabel(panel);
        figures_[p]->setObjectName(QStringLiteral("p%1BigScore").arg(p + 1));
        details_[p] = new QLabel(panel);
        details_[p]->setObjectName(QStringLiteral("p%1Average").arg(p + 1));
        details_[p]->setToolTip(QStringLiteral("Three-dart average: points scored per dart thrown, times 3"));
        for (QLabel *label : {static_cast<QLabel *>(names_[p]), figures_[p], details_[p]}) {
            label->setAlignment(Qt::AlignCenter);
            label->setTextFormat(Qt::PlainText);
            lines->addWidget(label);
        }
        QFont big = figures_[p]->font();
        big.setBold(true);
        big.setPixelSize(smallestFigure);
        figures_[p]->setFont(big);
        for (QLabel *label : {static_cast<QLabel *>(names_[p]), details_[p]}) {
            QFont bold = label->font();
            bold.setBold(true);
            label->setFont(bold);
        }
        panels_[p] = panel;
        row->addWidget(panel, 1);
    }
    column->addLayout(row);
    buildMatchLine(column);

    finish_ = new FittingLabel(this);
    finish_->setObjectName(QStringLiteral("glanceFinish"));
    finish_->setAlignment(Qt::AlignCenter);
    finish_->setToolTip(QStringLiteral("The finish the checkout chart advises for the score left"));
    finish_->setStyleSheet(QString::fromLatin1(finishStyle).arg(finish_->objectName()));
    QFont large = finish_->font();
    large.setBold(true);
    large.setPixelSize(smallestFinish);
    finish_->setFont(large);
    // The line keeps its height while it is empty, so the board below stays put.
    finish_->setMinimumHeight(finish_->fontMetrics().height());
    column->addWidget(finish_);

    // The checkout worked out from the player's own darts; one line that
    // shrinks to its room, hidden while it has nothing to say.
    yourOut_ = new FittingLabel(this);
    yourOut_->setObjectName(QStringLiteral("lblYourOut"));
    yourOut_->setAlignment(Qt::AlignCenter);
    yourOut_->setTextFormat(Qt::PlainText);
    yourOut_->setToolTip(QStringLiteral("The checkout with the best chance for you, worked out from your own "
                                        "darts, and the chance of the chart's"));
    QFont bold = yourOut_->font();
    bold.setBold(true);
    yourOut_->setFont(bold);
    yourOut_->hide();
    column->addWidget(yourOut_);
    markThrower(0);
}

void ScoreGlance::buildMatchLine(QVBoxLayout *column)
{
    // Under the panels: the score in large bold type, and who threw first
    // below it.
    matchLine_ = new QWidget(this);
    auto *line = new QVBoxLayout(matchLine_);
    line->setContentsMargins(4, 0, 4, 0);
    line->setSpacing(0);
    matchScore_ = new FittingLabel(matchLine_);
    matchScore_->setObjectName(QStringLiteral("lblMatchScore"));
    matchScore_->setToolTip(QStringLiteral("The score of the match, the left player's first"));
    QFont large = matchScore_->font();
    large.setBold(true);
    large.setPixelSize(smallestFinish);
    matchScore_->setFont(large);
    legStarter_ = new FittingLabel(matchLine_);
    legStarter_->setObjectName(QStringLiteral("lblLegStarter"));
    for (FittingLabel *label : {matchScore_, legStarter_}) {
        label->setTextFormat(Qt::PlainText);
        label->setAlignment(Qt::AlignCenter);
        line->addWidget(label);
    }
    matchLine_->hide();
    column->addWidget(matchLine_);
}

void ScoreGlance::showMatch(const QString &score, const QString &starter)
{
    matchScore_->setText(score);
    legStarter_->setText(starter);
    matchLine_->setVisible(!score.isEmpty() || !starter.isEmpty());
}

void ScoreGlance::showName(int player, const QString &name)
{
    names_[player - 1]->setText(name);
}

void ScoreGlance::showFigures(int player, const GlanceFigures &figures)
{
    shown_[player - 1] = figures;
    figures_[player - 1]->setText(figures.figure);
    details_[player - 1]->setText(figures.detail);
    restyle();
}

void ScoreGlance::showYourOut(const QString &text)
{
    yourOut_->setText(text);
    yourOut_->setVisible(!text.isEmpty());
}

void ScoreGlance::markThrower(int player)
{
    thrower_ = player;
    restyle();
}

void ScoreGlance::restyle()
{
    for (int p = 0; p < 2; ++p) {
        const char *style = p + 1 != thrower_ ? waitingStyle : shown_[p].bust ? bustStyle : throwingStyle;
        const QString sheet = QString::fromLatin1(style).arg(panels_[p]->objectName());
        if (panels_[p]->styleSheet() != sheet)
            panels_[p]->setStyleSheet(sheet);
    }
    // Games without finishes have no line for them.
    const std::optional<QString> &finish = shown_[thrower_ > 0 ? thrower_ - 1 : 0].finish;
    finish_->setVisible(finish.has_value());
    finish_->setText(thrower_ > 0 ? finish.value_or(QString()) : QString());
}

void ScoreGlance::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    // Three digits take about two em; the height follows the width only.
    const int figure = std::clamp(panels_[0]->width() * 2 / 5, smallestFigure, largestFigure);
    for (QLabel *label : figures_)
        setPixelSize(label, figure);
    // "T20 · T19 · D12" takes about eight em.
    const int finish = std::clamp(width() / 10, smallestFinish, largestFinish);
    if (finish_->font().pixelSize() != finish) {
        setPixelSize(finish_, finish);
        finish_->setMinimumHeight(finish_->fontMetrics().height());
    }
}

} // namespace tavrix
