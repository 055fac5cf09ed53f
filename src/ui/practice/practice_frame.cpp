#include "ui/practice/practice_frame.h"

#include "core/practice/practice_session.h"
#include "ui/dialogs/compact_layout.h"
#include "ui/dialogs/fitting_label.h"
#include "ui/dialogs/main_button.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tavrix {

namespace {

// The instruction's size: read across a room beside the board on the
// smallest screen, larger on a large one.
constexpr int smallestInstruction = 24;
constexpr int largestInstruction = 40;

// A read-out never widens the frame: a long description ("Missed board")
// shrinks or is cut short within the column's room.
QLabel *valueLabel(const QString &name, QWidget *parent)
{
    auto *label = new FittingLabel(QStringLiteral("??"), parent);
    label->setObjectName(name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

PracticeFrame::PracticeFrame(QWidget *parent)
    : QGroupBox(QStringLiteral("Practice Mode"), parent)
{
    setObjectName(QStringLiteral("practiceModeFrame"));
    auto *layout = new QVBoxLayout(this);
    compact(layout, 4);

    frame3_ = new QGroupBox(QStringLiteral("Select Target or use \"Random\""), this);
    frame3_->setObjectName(QStringLiteral("Frame3"));
    auto *choice = compact(new QFormLayout(frame3_), 2);
    ringDrop_ = new QComboBox(frame3_);
    ringDrop_->setObjectName(QStringLiteral("RingDrop"));
    const std::pair<const char *, int> rings[] = {
        {"-- Random --", itemData(TargetItem::Random)}, {"Any", 1}, {"Double", 2}, {"Triple!", 3}};
    for (const auto &[text, data] : rings)
        ringDrop_->addItem(QString::fromLatin1(text), data);
    scoreDrop_ = new QComboBox(frame3_);
    scoreDrop_->setObjectName(QStringLiteral("ScoreDrop"));
    const std::pair<const char *, TargetItem> specials[] = {{"-- Random --", TargetItem::Random},
                                                            {"-- Count Down  --", TargetItem::CountDown},
                                                            {"-- Count Up --", TargetItem::CountUp},
                                                            {"Bull", TargetItem::Bull}};
    for (const auto &[text, data] : specials)
        scoreDrop_->addItem(QString::fromLatin1(text), itemData(data));
    for (int number = 20; number >= 1; --number)
        scoreDrop_->addItem(QString::number(number), number);
    choice->addRow(QStringLiteral("Ring:"), ringDrop_);
    choice->addRow(QStringLiteral("Score:"), scoreDrop_);
    layout->addWidget(frame3_);

    goButton_ = new QPushButton(QStringLiteral("Go"), this);
    goButton_->setObjectName(QStringLiteral("goButton"));
    makeMainButton(goButton_);
    layout->addWidget(goButton_);
    generalText_ = new QLabel(QStringLiteral("Click \"Go\" to begin"), this);
    generalText_->setObjectName(QStringLiteral("GeneralText"));
    generalText_->setWordWrap(true);
    // The target to shoot for, readable from the oche; it grows with the frame.
    QFont bold = generalText_->font();
    bold.setBold(true);
    bold.setPixelSize(smallestInstruction);
    generalText_->setFont(bold);
    layout->addWidget(generalText_);

    auto *results = new QGroupBox(QStringLiteral("Set Results"), this);
    results->setObjectName(QStringLiteral("Frame1"));
    auto *grid = compact(new QGridLayout(results), 2);
    grid->addWidget(new QLabel(QStringLiteral("Radial dist:"), results), 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("Angle:"), results), 0, 2);
    grid->addWidget(new QLabel(QStringLiteral("Score:"), results), 0, 3);
    for (int i = 0; i < 3; ++i) {
        grid->addWidget(new QLabel(QStringLiteral("Dart %1:").arg(i + 1), results), i + 1, 0);
        rdisttext[i] = valueLabel(QStringLiteral("rdisttext_%1").arg(i), results);
        angleText[i] = valueLabel(QStringLiteral("angleText_%1").arg(i), results);
        scoreText[i] = valueLabel(QStringLiteral("scoreText_%1").arg(i), results);
        grid->addWidget(rdisttext[i], i + 1, 1);
        grid->addWidget(angleText[i], i + 1, 2);
        grid->addWidget(scoreText[i], i + 1, 3);
    }
    const std::tuple<const char *, const char *, QLabel **> measures[] = {
        {"3-Dart avg. dist:", "avgDistText", &avgDistText},
        {"Geom. Avg. dist:", "geomDistText", &geomDistText},
        {"Grouping dist:", "groupingDistText", &groupingDistText}};
    int row = 4;
    for (const auto &[caption, name, label] : measures) {
        *label = valueLabel(QString::fromLatin1(name), results);
        grid->addWidget(new QLabel(QString::fromLatin1(caption), results), row, 0, 1, 2);
        grid->addWidget(*label, row++, 2, 1, 2);
    }
    frame1_ = results;
    layout->addWidget(results);

    auto *totals = new QGroupBox(QStringLiteral("Running Totals"), this);
    totals->setObjectName(QStringLiteral("Frame2"));
    auto *totalsForm = compact(new QFormLayout(totals), 2);
    const std::tuple<const char *, const char *, QLabel **> figures[] = {
        {"Pct. all targets hit:", "PctAllHitText", &pctAllHitText},
        {"Pct. this target hit:", "PctThisHitText", &pctThisHitText},
        {"Avg. dist. to any target:", "AvgDistAnyText", &avgDistAnyText},
        {"Avg. dist. to this target:", "AvgDistThisText", &avgDistThisText},
        {"Pct. \"Anys\" hit:", "pctAnysHitText", &pctAnysHitText},
        {"Pct. doubles hit:", "PctDoublesHitText", &pctDoublesHitText},
        {"Pct. triples hit:", "PctTriplesHitText", &pctTriplesHitText}};
    for (const auto &[caption, name, label] : figures) {
        *label = valueLabel(QString::fromLatin1(name), totals);
        totalsForm->addRow(QString::fromLatin1(caption), *label);
    }
    layout->addWidget(totals);
    layout->addStretch();
}

void PracticeFrame::resizeEvent(QResizeEvent *event)
{
    QGroupBox::resizeEvent(event);
    // "Shoot for Triple 20" takes about ten em; a longer target wraps.
    const int pixels = std::clamp(width() / 10, smallestInstruction, largestInstruction);
    if (generalText_->font().pixelSize() != pixels) {
        QFont font = generalText_->font();
        font.setPixelSize(pixels);
        generalText_->setFont(font);
    }
}

} // namespace tavrix
