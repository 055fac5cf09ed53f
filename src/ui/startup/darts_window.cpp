#include "ui/startup/darts_window.h"

#include "ui/statistics/statistics_dialog.h"

#include "ui/advice/aim_advice_service.h"
#include "ui/board/board_picture.h"
#include "ui/dialogs/alert_box.h"
#include "ui/help/help_viewer.h"
#include "ui/dialogs/messages.h"
#include "ui/dialogs/stats_files.h"
#include "ui/dialogs/stats_rescue.h"
#include "ui/players/new_user_dialog.h"
#include "ui/players/user_edit_dialog.h"
#include "ui/players/user_select_dialog.h"
#include "ui/play/game_frame.h"
#include "ui/play/play_controller.h"
#include "ui/play/play_keys.h"
#include "ui/opponent/skill_options.h"
#include "core/opponent/skill_profile.h"
#include "ui/practice/practice_controller.h"
#include "ui/practice/practice_frame.h"
#include "ui/review/review_controller.h"
#include "ui/review/aim_map_view.h"
#include "ui/review/review_frame.h"
#include "ui/review/skill_factors_frame.h"
#include "ui/startup/board_beside_layout.h"
#include "core/session/session.h"
#include "ui/sound/sounds.h"
#include "ui/startup/game_choices.h"
#include "ui/startup/program.h"
#include "ui/training/training_controller.h"
#include "ui/training/training_frame.h"

#include <QAbstractButton>
#include <QAction>
#include <QCloseEvent>
#include <QDateTime>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace tavrix {

namespace {

QLabel *namedLabel(const char *name, QWidget *parent, const QString &text = {})
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setWordWrap(true);
    // The records name the opponent, who may be another copy's player.
    label->setTextFormat(Qt::PlainText);
    return label;
}

QFont greetingFont(const QWidget *widget)
{
    QFont font = widget->font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    font.setBold(true);
    return font;
}

} // namespace

Darts::Darts(Program &program)
    : program_(program)
    , session_(program.session())
{
    setObjectName(QStringLiteral("Darts"));
    setWindowTitle(QStringLiteral("Halvern Tavrix!"));
    buildFrames();
    buildMenus();
    resize(1024, 768);
    formLoad();
}

Darts::~Darts() = default;

void Darts::showFitted()
{
    // With room to spare the window opens at 1024 x 768; on a smaller screen
    // it takes the whole screen, which its layout is made to fit. The margin
    // allows for the title bar and the window frame.
    const QScreen *screen = this->screen();
    const QSize room = screen ? screen->availableGeometry().size() : QSize();
    if (room.isValid() && (room.width() < 1024 + 16 || room.height() < 768 + 64))
        showMaximized();
    else
        show();
}

void Darts::buildFrames()
{
    auto *central = new QWidget(this);
    picture_ = new BoardPicture(central);
    picture_->setObjectName(QStringLiteral("Picture1"));

    // The hover text and the record labels float on the board picture.
    scoreHoverText_ = namedLabel("ScoreHoverText", picture_);
    scoreHoverText_->setWordWrap(false);
    scoreHoverText_->setStyleSheet(QStringLiteral(
        "background: rgba(255, 255, 225, 235); color: black; border: 1px solid #606060;"
        " padding: 1px 3px;"));
    scoreHoverText_->setAttribute(Qt::WA_TransparentForMouseEvents);
    scoreHoverText_->hide();
    // The board's corners are clear of every bed: "This Round" on the left,
    // "Overall" on the right, each on a dark panel that reads over the
    // board's black rim and the window's grey alike, above the numbers.
    const std::tuple<QLabel **, const char *, const char *, int> statsPlaces[] = {
        {&records_.rstatTitleLabel, "rstatTitleLabel", "This Round", 2},
        {&records_.rstatsText, "rstatsText", "", 2},
        {&records_.ostatTitleLabel, "ostatTitleLabel", "Overall", BoardPicture::side - 112},
        {&records_.ostatsText, "ostatsText", "", BoardPicture::side - 112}};
    for (const auto &[place, name, caption, left] : statsPlaces) {
        QLabel *label = namedLabel(name, picture_, QString::fromLatin1(caption));
        const bool title = QByteArray(caption).size() > 0;
        label->setGeometry(left, title ? 2 : 16, 110, title ? 14 : 48);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        // The type is set as a font, not in the style, so that it grows
        // with the board.
        label->setStyleSheet(QStringLiteral("color: white; background: rgba(0, 0, 0, 170); padding: 0px 3px;"));
        QFont font = label->font();
        font.setPointSizeF(7);
        font.setBold(title);
        label->setFont(font);
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        label->hide();
        *place = label;
    }

    auto *frameColumn = new QVBoxLayout;
    gameFrame_ = new GameFrame(central);
    playFrame_ = gameFrame_;
    practiceFrame_ = new PracticeFrame(central);
    reviewFrame_ = new ReviewFrame(central);
    trainingFrame_ = new TrainingModeFrame(central);

    greetingLabels_.append(gameFrame_->playerNameText);
    nameLabels_ = {gameFrame_->player2Text, gameFrame_->player2Text01};
    skillOptions_ = gameFrame_->fraSkill;
    btnStartGame_ = gameFrame_->btnStartGame;

    greetingLabels_.append(reviewFrame_->greeting());

    for (QLabel *label : std::as_const(greetingLabels_))
        label->setFont(greetingFont(label));
    for (QGroupBox *frame :
         std::initializer_list<QGroupBox *>{playFrame_, practiceFrame_, reviewFrame_, trainingFrame_})
        frameColumn->addWidget(frame);
    auto *columns = new BoardBesideLayout(central, picture_, frameColumn);
    // Narrow margins: on an 800 x 600 screen the board and the mode frame
    // share the window's whole width.
    constexpr int margin = 4;
    constexpr int spacing = 6;
    columns->setContentsMargins(margin, margin, margin, margin);
    columns->setSpacing(spacing);
    // The frames keep the width they have on the smallest screen, where the
    // board has its least size; the board grows only into room beyond that.
    columns->setFramesWidth(smallestScreenWidth - 2 * margin - spacing - BoardPicture::side);
    setCentralWidget(central);

    boardInput_ = new BoardInput(picture_, session_.random, scoreHoverText_, records_.all(), this);
    rescue_ = std::make_unique<StatsRescue>(program_.store(), program_.messages(), session_);
    files_ = std::make_unique<StatsFiles>(program_.store(), program_.messages(), session_);
    aims_ = new AimAdviceService(program_.store(), program_.checkoutChart(), this);
    play_ = new PlayController({session_, program_.store(), program_.sounds(), program_.messages(),
                                program_.advisor(), skill_, *boardInput_, *gameFrame_, records_,
                                this, *rescue_, *aims_},
                               this);
    auto *keys = new PlayKeys(*gameFrame_, this);
    gameChoices_ = new GameChoices(*gameFrame_, this);
    practice_ = new PracticeController({session_, program_.store(), program_.sounds(), program_.messages(),
                                        *boardInput_, *practiceFrame_, this, *rescue_},
                                       this);
    connect(practice_, &PracticeController::reenterRequested, this, [this] { switchMode(Mode::Practice); });
    // Enter opens and confirms practice sets, but never quits a sequence.
    keys->addEnterButton(practiceFrame_->goButton(), [this] { return practice_->goCaptionIsSafe(); });
    training_ = new TrainingController({session_, program_.store(), program_.sounds(), program_.messages(),
                                        *boardInput_, *trainingFrame_, this, *rescue_},
                                       this);
    // Enter starts a drill and confirms its sets, never quits one.
    keys->addEnterButton(trainingFrame_->startButton(), [] { return true; });
    keys->addEnterButton(trainingFrame_->confirmButton(), [] { return true; });
    review_ = new ReviewController({session_, program_.store(), program_.messages(), *boardInput_, *reviewFrame_,
                                    this},
                                   this);
    connect(review_, &ReviewController::areaChosen, this, &Darts::doPlot);
    aimMap_ = new AimMapView(*aims_, session_, *picture_, *reviewFrame_, this);
}

void Darts::formLoad()
{
    setPlayerName();
    switchMode(Mode::Play);
    picture_->setEnabled(false);
    session_.random.seed(static_cast<quint32>(QDateTime::currentMSecsSinceEpoch()));
    useCms_->setChecked(session_.useCms);
    useInches_->setChecked(!session_.useCms);
    soundEntry_->setChecked(program_.sounds().isEnabled());
}

void Darts::switchMode(Mode mode)
{
    picture_->clearPlots();
    hidePips();
    picture_->setEnabled(false);
    for (QGroupBox *frame :
         std::initializer_list<QGroupBox *>{playFrame_, practiceFrame_, reviewFrame_, trainingFrame_}) {
        frame->hide();
        frame->setEnabled(false);
    }
    scoreHoverText_->hide();
    currentMode_ = mode;
    aimMap_->setActive(mode == Mode::Review);
    for (QLabel *label : records_.all())
        label->hide();
    practice_->enter();
    training_->enter();

    switch (mode) {
    case Mode::Practice:
        boardInput_->setController(practice_);
        practiceFrame_->generalText()->setText(QStringLiteral("Click \"Go\" to begin"));
        practiceFrame_->show();
        practiceFrame_->setEnabled(true);
        practice_->begin();
        break;
    case Mode::Play:
        boardInput_->setController(play_);
        buildYouProfile();
        skillOptions_->showYouAvailability(skill_.youSampleCount);
        playFrame_->show();
        playFrame_->setEnabled(true);
        resetGame();
        break;
    case Mode::Review:
        boardInput_->setController(review_);
        picture_->setEnabled(true);
        // The figures of an area go with its plot, which the switch cleared.
        reviewFrame_->clearFigures();
        reviewFrame_->show();
        reviewFrame_->setEnabled(true);
        countTargetThrows();
        showReviewProfile();
        break;
    case Mode::Training:
        boardInput_->setController(training_);
        trainingFrame_->show();
        trainingFrame_->setEnabled(true);
        training_->begin();
        break;
    }
}

void Darts::resetGame()
{
    // A network game left this way is quit: the other copy is told.
    play_->leavePlay();
    play_->resetGame();
    for (QLabel *label : records_.all()) {
        label->hide();
        label->setEnabled(false);
    }
}

void Darts::setPlayerName()
{
    const QString greeting = QStringLiteral("Hey, ") + session_.currentPlayerName + QStringLiteral("!");
    for (QLabel *label : std::as_const(greetingLabels_))
        label->setText(greeting);
    for (QLabel *label : std::as_const(nameLabels_))
        label->setText(session_.currentPlayerName);
}

void Darts::buildYouProfile()
{
    if (!buildSkillProfile(skill_, SkillLevel::You, 0.0, program_.store(), session_.currentPlayerId))
        program_.messages().error(this, QString::fromLatin1(applicationTitle),
                                  program_.store().lastError());
}

void Darts::showReviewProfile()
{
    buildYouProfile();
    reviewFrame_->skillFactors()->showProfile(skill_, session_.useCms);
}

void Darts::doPlot(int ringCode, int segmentCode)
{
    if (review_->doPlot(ringCode, segmentCode))
        showReviewProfile();
}

void Darts::countTargetThrows()
{
    if (const std::optional<TargetCounts> counts = program_.store().targetCounts(session_.currentPlayerId))
        review_->setCounts(*counts);
    else
        program_.messages().error(this, QString::fromLatin1(applicationTitle),
                                  program_.store().lastError());
}

void Darts::restoreGameChoices()
{
    gameChoices_->restore();
}

NewUserDialog *Darts::newUserDialog()
{
    if (!newUserDialog_)
        newUserDialog_ = new NewUserDialog(program_.store(), session_, program_.messages(), this);
    return newUserDialog_;
}

UserSelectDialog *Darts::userSelectDialog()
{
    if (!userSelectDialog_) {
        userSelectDialog_ = new UserSelectDialog(program_.store(), session_, program_.messages(), this,
                                                 [this] { switchMode(currentMode_); });
    }
    return userSelectDialog_;
}

UserEditDialog *Darts::userEditDialog()
{
    if (!userEditDialog_)
        userEditDialog_ = new UserEditDialog(program_.store(), session_, program_.messages(), this);
    return userEditDialog_;
}

MyAlertBox *Darts::alertBox()
{
    if (!alertBox_)
        alertBox_ = new MyAlertBox(this);
    return alertBox_;
}

void Darts::unloadWindows()
{
    for (QWidget *dialog : std::initializer_list<QWidget *>{newUserDialog_, userEditDialog_,
                                                            userSelectDialog_, alertBox_, helpViewer_,
                                                            statistics_}) {
        if (dialog)
            dialog->hide();
    }
    close();
}

void Darts::closeEvent(QCloseEvent *event)
{
    // Once shut down (Exit, or a start that ended) the window just closes.
    if (!program_.isShutDown() && !mayLeaveGame()) {
        event->ignore();
        return;
    }
    program_.shutDownProgram();
    event->accept();
}

int selectedOption(const QList<QAbstractButton *> &group)
{
    for (int i = 0; i < group.size(); ++i) {
        if (group[i]->isChecked())
            return i + 1;
    }
    return 0;
}

} // namespace tavrix
