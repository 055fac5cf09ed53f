#include "ui/play/game_frame.h"

#include "ui/dialogs/fitting_label.h"
#include "ui/dialogs/compact_layout.h"
#include "ui/dialogs/main_button.h"
#include "ui/opponent/skill_options.h"
#include "ui/play/score_glance.h"
#include "core/games/match_play.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>

namespace tavrix {

namespace {

constexpr int hashSide = 22;

QGroupBox *frame(const char *name, const QString &caption, QWidget *parent)
{
    auto *box = new QGroupBox(caption, parent);
    box->setObjectName(QString::fromLatin1(name));
    return box;
}

QLabel *label(const QString &name, QWidget *parent, const QString &text = {})
{
    auto *l = new QLabel(text, parent);
    l->setObjectName(name);
    l->setTextFormat(Qt::PlainText);
    return l;
}

// A group of exclusive options named `name`_0, `name`_1, ...
QList<QAbstractButton *> options(const char *name, const QStringList &captions, QGroupBox *box,
                                 QBoxLayout *layout)
{
    QList<QAbstractButton *> buttons;
    auto *group = new QButtonGroup(box);
    for (int i = 0; i < captions.size(); ++i) {
        auto *option = new QRadioButton(captions[i], box);
        option->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i));
        group->addButton(option, i);
        layout->addWidget(option);
        buttons.append(option);
    }
    return buttons;
}

// A player's name over a score column; a long name shrinks to its room.
QLabel *nameLabel(const QString &name, QWidget *parent, const QString &text = {})
{
    auto *l = new FittingLabel(text, parent);
    l->setObjectName(name);
    l->setAlignment(Qt::AlignCenter);
    return l;
}

QCheckBox *check(const char *name, const QString &caption, QWidget *parent)
{
    auto *box = new QCheckBox(caption, parent);
    box->setObjectName(QString::fromLatin1(name));
    return box;
}

} // namespace

QPixmap cricketHash(int index, qreal devicePixelRatio)
{
    QPixmap pixmap(QSize(hashSide, hashSide) * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(20, 20, 20), 2.4, Qt::SolidLine, Qt::RoundCap));
    const double lo = 5, hi = hashSide - 5;
    p.drawLine(QPointF(lo, hi), QPointF(hi, lo));
    if (index >= 1)
        p.drawLine(QPointF(lo, lo), QPointF(hi, hi));
    if (index >= 2) {
        p.setPen(QPen(QColor(170, 0, 0), 2.4));
        p.drawEllipse(QPointF(hashSide / 2.0, hashSide / 2.0), hashSide / 2.0 - 1.5, hashSide / 2.0 - 1.5);
    }
    return pixmap;
}

GameFrame::GameFrame(QWidget *parent)
    : QGroupBox(QStringLiteral("Play Mode"), parent)
{
    setObjectName(QStringLiteral("PlayModeFrame"));
    auto *layout = new QVBoxLayout(this);
    compact(layout, 4);
    playerNameText = new FittingLabel(this);
    playerNameText->setObjectName(QStringLiteral("PlayerNameText"));
    layout->addWidget(playerNameText);
    buildOptions(layout);

    lblGameStartup = new WrappingLabel(this);
    lblGameStartup->setObjectName(QStringLiteral("lblGameStartup"));
    layout->addWidget(lblGameStartup);
    gameText = new WrappingLabel(this);
    gameText->setObjectName(QStringLiteral("gameText"));
    gameText->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // Room for the longest message, so the score board below keeps its place
    // while the messages change length.
    gameText->setMinimumHeight(gameText->fontMetrics().lineSpacing() * 7);
    layout->addWidget(gameText);

    scoreGlance = new ScoreGlance(this);
    layout->addWidget(scoreGlance);
    buildCricketScore(layout);
    build01Score(layout);
    for (QLabel *name : {player1Text, player2Text, player1Text01, player2Text01}) {
        name->setAutoFillBackground(true);
        name->setMargin(2);
    }
    for (QWidget *score : std::initializer_list<QWidget *>{fraCricketScore, fra01Score, scoreGlance}) {
        score->hide();
        score->setEnabled(false);
    }

    layout->addStretch();
    lblNetworkActive = new QLabel(QStringLiteral("Network Connection Active"), this);
    lblNetworkActive->setObjectName(QStringLiteral("lblNetworkActive"));
    lblNetworkActive->setAlignment(Qt::AlignCenter);
    lblNetworkActive->setStyleSheet(QStringLiteral("color: #006400; font-weight: bold;"));
    lblNetworkActive->hide();
    layout->addWidget(lblNetworkActive);
    auto *buttons = new QHBoxLayout;
    btnStartGame = new QPushButton(QStringLiteral("Start Game"), this);
    btnStartGame->setObjectName(QStringLiteral("btnStartGame"));
    btnQuitGame = new QPushButton(QStringLiteral("Quit Game"), this);
    btnQuitGame->setObjectName(QStringLiteral("btnQuitGame"));
    btnQuitGame->setEnabled(false);
    btnUndoDart = new QPushButton(QStringLiteral("Undo dart"), this);
    btnUndoDart->setObjectName(QStringLiteral("btnUndoDart"));
    btnUndoDart->setEnabled(false);
    // The main button alone on its row, large enough to hit without looking.
    makeMainButton(btnStartGame);
    layout->addWidget(btnStartGame);
    buttons->addWidget(btnUndoDart, 1);
    buttons->addWidget(btnQuitGame, 1);
    layout->addLayout(buttons);
}

void GameFrame::buildOptions(QVBoxLayout *layout)
{
    auto *choices = new QGridLayout;
    choices->setSpacing(4);
    fraGame = frame("FraGame", QStringLiteral("Game"), this);
    opGame = options("opGame", {QStringLiteral("Cricket"), QStringLiteral("301"), QStringLiteral("501")},
                     fraGame, compact(new QVBoxLayout(fraGame)));
    fraOpponent = frame("FraOpponent", QStringLiteral("Opponent"), this);
    opOpponent = options("opOpponent", {QStringLiteral("Computer"), QStringLiteral("Human/Network")},
                         fraOpponent, compact(new QVBoxLayout(fraOpponent)));
    fraSkill = new SkillOptions(this);
    compact(fraSkill->layout());

    fraMoodFactor = frame("fraMoodFactor", QStringLiteral("Mood Factor"), this);
    auto *mood = compact(new QHBoxLayout(fraMoodFactor));
    slider1 = new QSlider(Qt::Horizontal, fraMoodFactor);
    slider1->setObjectName(QStringLiteral("Slider1"));
    slider1->setRange(-50, 50);
    mood->addWidget(new QLabel(QStringLiteral("-50%"), fraMoodFactor));
    mood->addWidget(slider1, 1);
    mood->addWidget(new QLabel(QStringLiteral("+50%"), fraMoodFactor));
    fraMoodFactor->hide();
    fraMoodFactor->setEnabled(false);

    fraCricketOptions = frame("fraCricketOptions", QStringLiteral("Cricket Options"), this);
    auto *cricketLayout = compact(new QVBoxLayout(fraCricketOptions));
    opCricketOptions = options("opCricketOptions", {QStringLiteral("Simple"), QStringLiteral("Standard")},
                               fraCricketOptions, cricketLayout);
    opCricketOptions[1]->setChecked(true);
    chkKeepCricketStats = check("chkKeepCricketStats", QStringLiteral("Keep Target Stats"), fraCricketOptions);
    cricketLayout->addWidget(chkKeepCricketStats);

    fra01Options = frame("fra01Options", QStringLiteral("'01 Options"), this);
    auto *x01Layout = compact(new QVBoxLayout(fra01Options));
    chkDoubleIn = check("chkDoubleIn", QStringLiteral("Double In"), fra01Options);
    chkDoubleOut = check("chkDoubleOut", QStringLiteral("Double Out"), fra01Options);
    chkKeep01stats = check("chkKeep01stats", QStringLiteral("Keep Target Stats"), fra01Options);
    for (QCheckBox *box : {chkDoubleIn, chkDoubleOut, chkKeep01stats})
        x01Layout->addWidget(box);
    // Both "Keep Target Stats" boxes always agree.
    connect(chkKeep01stats, &QCheckBox::clicked, chkKeepCricketStats, &QCheckBox::setChecked);
    connect(chkKeepCricketStats, &QCheckBox::clicked, chkKeep01stats, &QCheckBox::setChecked);
    chkKeep01stats->setChecked(true);
    chkKeepCricketStats->setChecked(true);

    // Game and opponent side by side, then the skill and the match, which
    // is no taller than the skill and so costs the small screen no height;
    // the rest full width, so that the longest captions keep their room
    // beside the board on a small screen.
    choices->addWidget(fraGame, 0, 0);
    choices->addWidget(fraOpponent, 0, 1);
    choices->addWidget(fraSkill, 1, 0);
    choices->addWidget(buildMatchOptions(), 1, 1, Qt::AlignTop);
    choices->addWidget(fraMoodFactor, 2, 0, 1, 2);
    choices->addWidget(fraCricketOptions, 3, 0, 1, 2);
    choices->addWidget(fra01Options, 3, 0, 1, 2);
    layout->addLayout(choices);
}

QGroupBox *GameFrame::buildMatchOptions()
{
    fraMatch = frame("fraMatch", QStringLiteral("Match"), this);
    // "Sets" over "[2] sets of" over "[3] legs": narrow enough for half the
    // frame beside the board.
    auto *grid = compact(new QGridLayout(fraMatch));
    grid->setHorizontalSpacing(4);
    cboMatchFormat = new QComboBox(fraMatch);
    cboMatchFormat->setObjectName(QStringLiteral("cboMatchFormat"));
    cboMatchFormat->addItems({QStringLiteral("Single game"), QStringLiteral("Legs"), QStringLiteral("Sets")});
    cboMatchFormat->setToolTip(QStringLiteral("One game, or a match: the first to win the legs given, or the "
                                              "first to win the sets given, each of the legs given"));
    spnSets = new QSpinBox(fraMatch);
    spnSets->setObjectName(QStringLiteral("spnSets"));
    spnSets->setToolTip(QStringLiteral("Sets to win the match"));
    spnLegs = new QSpinBox(fraMatch);
    spnLegs->setObjectName(QStringLiteral("spnLegs"));
    spnLegs->setToolTip(QStringLiteral("Legs to win the match, or each set"));
    lblMatchSetsOf = label(QStringLiteral("lblMatchSetsOf"), fraMatch, QStringLiteral("sets of"));
    lblMatchLegs = label(QStringLiteral("lblMatchLegs"), fraMatch, QStringLiteral("legs"));
    grid->addWidget(cboMatchFormat, 0, 0, 1, 2);
    grid->addWidget(spnSets, 1, 0);
    grid->addWidget(lblMatchSetsOf, 1, 1);
    grid->addWidget(spnLegs, 2, 0);
    grid->addWidget(lblMatchLegs, 2, 1);
    grid->setColumnStretch(1, 1);
    connect(cboMatchFormat, &QComboBox::currentIndexChanged, this, &GameFrame::showMatchBounds);
    showMatchBounds();
    // What a match is until the player says otherwise: first to 3 legs, or
    // to 2 sets of them.
    spnLegs->setValue(3);
    spnSets->setValue(2);
    return fraMatch;
}

void GameFrame::showMatchBounds()
{
    const auto choice = MatchChoice(cboMatchFormat->currentIndex());
    const bool sets = choice == MatchChoice::Sets;
    const bool match = choice != MatchChoice::SingleGame;
    // Legs win a set (2 to 5) in a set match, the match (2 to 11) otherwise.
    spnLegs->setRange(MatchFormat::MinLegs, sets ? MatchFormat::MaxSetLegs : MatchFormat::MaxLegs);
    spnSets->setRange(MatchFormat::MinSets, MatchFormat::MaxSets);
    for (QWidget *part : std::initializer_list<QWidget *>{spnLegs, lblMatchLegs})
        part->setVisible(match);
    for (QWidget *part : std::initializer_list<QWidget *>{spnSets, lblMatchSetsOf})
        part->setVisible(sets);
}

void GameFrame::buildCricketScore(QVBoxLayout *layout)
{
    fraCricketScore = frame("fraCricketScore", QStringLiteral("Cricket Score"), this);
    auto *marks = compact(new QGridLayout(fraCricketScore), 6);
    marks->setVerticalSpacing(1);
    player1Text = nameLabel(QStringLiteral("Player1Text"), fraCricketScore, QStringLiteral("Computer"));
    player2Text = nameLabel(QStringLiteral("Player2Text"), fraCricketScore);
    marks->addWidget(player1Text, 0, 0, 1, 2);
    marks->addWidget(player2Text, 0, 3, 1, 2);
    // Rows 20 down to 15, then the bull, as a chalk board has them.
    const int slotsInRows[] = {1, 2, 3, 4, 5, 6, 0};
    for (int row = 0; row < 7; ++row) {
        const int slot = slotsInRows[row];
        lblP1Points[slot] = label(QStringLiteral("lblP1Points_%1").arg(slot), fraCricketScore);
        p1ScoreImage[slot] = label(QStringLiteral("P1ScoreImage_%1").arg(slot), fraCricketScore);
        p2ScoreImage[slot] = label(QStringLiteral("P2ScoreImage_%1").arg(slot), fraCricketScore);
        lblP2Points[slot] = label(QStringLiteral("lblP2Points_%1").arg(slot), fraCricketScore);
        for (QLabel *image : {p1ScoreImage[slot], p2ScoreImage[slot]})
            image->setFixedSize(hashSide, hashSide);
        cricketNumbers[slot] = label(QStringLiteral("lblCricketNumber_%1").arg(slot), fraCricketScore,
                                     slot == 0 ? QStringLiteral("Bull") : QString::number(21 - slot));
        QFont bold = cricketNumbers[slot]->font();
        bold.setBold(true);
        cricketNumbers[slot]->setFont(bold);
        marks->addWidget(lblP1Points[slot], row + 1, 0, Qt::AlignRight);
        marks->addWidget(p1ScoreImage[slot], row + 1, 1, Qt::AlignCenter);
        marks->addWidget(cricketNumbers[slot], row + 1, 2, Qt::AlignCenter);
        marks->addWidget(p2ScoreImage[slot], row + 1, 3, Qt::AlignCenter);
        marks->addWidget(lblP2Points[slot], row + 1, 4, Qt::AlignLeft);
    }
    lblP1TotalPts = label(QStringLiteral("lblP1TotalPts"), fraCricketScore);
    lblTotalPts = label(QStringLiteral("lblTotalPts"), fraCricketScore, QStringLiteral("Total"));
    lblP2TotalPts = label(QStringLiteral("lblP2TotalPts"), fraCricketScore);
    marks->addWidget(lblP1TotalPts, 8, 0, 1, 2, Qt::AlignRight);
    marks->addWidget(lblTotalPts, 8, 2, Qt::AlignCenter);
    marks->addWidget(lblP2TotalPts, 8, 3, 1, 2, Qt::AlignLeft);
    for (int column : {0, 4})
        marks->setColumnStretch(column, 1);
    layout->addWidget(fraCricketScore);
}

void GameFrame::build01Score(QVBoxLayout *layout)
{
    fra01Score = frame("fra01Score", QStringLiteral("501 Score"), this);
    auto *board = compact(new QGridLayout(fra01Score), 6);
    board->setVerticalSpacing(2);
    player1Text01 = nameLabel(QStringLiteral("Player1Text01"), fra01Score, QStringLiteral("Computer"));
    player2Text01 = nameLabel(QStringLiteral("Player2Text01"), fra01Score);
    board->addWidget(player1Text01, 0, 0);
    board->addWidget(player2Text01, 0, 1);
    // A long game's columns scroll, the newest line in view.
    auto *scroller = new QScrollArea(fra01Score);
    scroller->setObjectName(QStringLiteral("scoreColumns01"));
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setWidgetResizable(true);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *columnsWidget = new QWidget(scroller);
    auto *columns = new QGridLayout(columnsWidget);
    columns->setContentsMargins(0, 0, 0, 0);
    p1ScoreText = label(QStringLiteral("p1ScoreText"), columnsWidget, QStringLiteral("501"));
    p2scoretext = label(QStringLiteral("p2scoretext"), columnsWidget, QStringLiteral("501"));
    columns->addWidget(p1ScoreText, 0, 0, Qt::AlignHCenter | Qt::AlignTop);
    columns->addWidget(p2scoretext, 0, 1, Qt::AlignHCenter | Qt::AlignTop);
    scroller->setWidget(columnsWidget);
    scroller->setMinimumHeight(p1ScoreText->fontMetrics().lineSpacing() * 4);
    QScrollBar *bar = scroller->verticalScrollBar();
    connect(bar, &QScrollBar::rangeChanged, bar, [bar](int, int maximum) { bar->setValue(maximum); });
    board->addWidget(scroller, 1, 0, 1, 2);
    board->setRowStretch(1, 1);
    layout->addWidget(fra01Score, 1);
}

void GameFrame::showMarks(int player, int slot, int marks)
{
    QLabel *image = (player == 1 ? p1ScoreImage : p2ScoreImage)[slot];
    if (marks <= 0)
        image->clear();
    else
        image->setPixmap(cricketHash(std::min(marks, 3) - 1, devicePixelRatioF()));
}

void GameFrame::showClosedNumbers(const std::array<bool, 7> &closed)
{
    for (int slot = 0; slot < 7; ++slot) {
        QPalette palette = cricketNumbers[slot]->palette();
        palette.setColor(QPalette::WindowText, closed[slot] ? QColor(0xa0a0a0) : QColor(Qt::black));
        cricketNumbers[slot]->setPalette(palette);
        QFont font = cricketNumbers[slot]->font();
        font.setStrikeOut(closed[slot]);
        cricketNumbers[slot]->setFont(font);
    }
}

void GameFrame::colourThrower(int player)
{
    auto paint = [](QLabel *name, bool throwing) {
        QPalette palette = name->palette();
        palette.setColor(QPalette::Window, throwing ? QColor(0xffffff) : QColor(0xc0c0c0));
        palette.setColor(QPalette::WindowText, Qt::black);
        name->setPalette(palette);
    };
    for (QLabel *name : {player1Text, player1Text01})
        paint(name, player == 1);
    for (QLabel *name : {player2Text, player2Text01})
        paint(name, player == 2);
}

} // namespace tavrix
