// Whole games at one board, played with real clicks on the board picture and
// the buttons, then checked in the statistics database.

#include "../support/data_table.h"
#include "../support/lost_file.h"
#include "../support/program_test.h"
#include "ui/board/board_input.h"
#include "ui/board/dart_marker.h"
#include "ui/dialogs/alert_box.h"
#include "ui/dialogs/fitting_label.h"
#include "ui/play/score_glance.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLayout>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

using namespace tavrix;

class TestGames : public ProgramTest {
    Q_OBJECT

    QString gameText() { return text("gameText"); }
    bool shown(const char *marker) { return control<DartMarker>(marker)->isVisible(); }
    // Starts a game against the computer at a level, with its dart every
    // tick of a timer that no longer waits a second.
    void startAgainstComputer(const char *game, const char *skill)
    {
        for (const char *option : {"opOpponent_0", skill, game})
            control<QRadioButton>(option)->click();
        QTimer *timer = control<QTimer>("ThrowTimer");
        QCOMPARE(timer->interval(), 1000);
        timer->setInterval(0);
        press(QStringLiteral("Start Game"));
    }
    int shownCPips() { return shown("CPips_0") + shown("CPips_1") + shown("CPips_2"); }
    // The least size of the window or a dialog, as the event loop leaves
    // it: a child shown or hidden deep inside re-lays its parents out one
    // level per pass.
    static QSize leastSize(QWidget *widget)
    {
        for (int level = 0; level < 8; ++level)
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        widget->layout()->activate();
        return widget->minimumSizeHint().expandedTo(widget->minimumSize());
    }
    // The least size, title bar aside, fits an 800 x 600 screen.
    static void expectFits(const QString &state, QSize need)
    {
        QVERIFY2(need.width() <= 800 && need.height() <= 600 - 32,
                 qPrintable(QStringLiteral("%1 needs %2 x %3").arg(state).arg(need.width()).arg(need.height())));
    }
    // The window fits, and on the small screen the board keeps its least
    // size, one pixel per picture unit.
    void expectFitsSmallScreen(const QString &state)
    {
        expectFits(state, leastSize(window()));
        QVERIFY2(picture()->size() == QSize(BoardPicture::side, BoardPicture::side), qPrintable(state));
    }

private slots:
    void init()
    {
        startProgram();
        program_->session().random.seed(7);
    }
    void cleanup() { program_.reset(); }

    // 501, double out: Ann wins on double 12 after 180, 180, 141. Another
    // program holds the statistics file from the second 180 on: the window
    // waits only a moment, says so once, keeps the darts and the game's end,
    // and writes them all once the file is free.
    void a501FinishedOnADoubleWhileTheFileIsHeld()
    {
        startAgainst(QStringLiteral("Bob O'Neil"));
        corkAnnFirst();
        playSet({"T20", "T20", "T20"});
        playSet({"M", "M", "M"});

        auto locker = std::make_unique<OtherConnection>(home_->dbPath);
        QVERIFY(locker->exec({QStringLiteral("BEGIN EXCLUSIVE")}));
        // The window waits only a moment for a held file, not for its holder.
        QCOMPARE(rows(QStringLiteral("PRAGMA busy_timeout"))[0][0].toInt(), 300);
        playSet({"T20", "T20", "T20"});
        playSet({"M", "M", "M"});
        playSet({"T20", "T19", "D12"});

        QCOMPARE(text("p2scoretext"), QStringLiteral("501\n321\n141\nWinner!"));
        QCOMPARE(messages_.shown.last().text, QStringLiteral("Ann won!"));
        QCOMPARE(sounds_.played.last(), QStringLiteral("applausewin.wav"));
        const QStringList errors = messages_.texts(QStringLiteral("error"));
        QCOMPARE(errors.size(), 1);
        QVERIFY(errors[0].contains(QStringLiteral("in use by another program")));

        locker.reset();
        control<QTimer>("saveRetryTimer")->setInterval(10);
        QTRY_COMPARE(rows(QStringLiteral("SELECT count(*) FROM gamesdarts"))[0][0].toInt(), 1 + 9);
        QVERIFY(!control<QTimer>("saveRetryTimer")->isActive());
        QCOMPARE(rows(QStringLiteral("SELECT gametype, skill, opponent, result, throws, points, bestset, outset FROM games")),
                 (QList<QVariantList>{{3, 1, "Bob O'Neil", "W", 9, 501, 180, 141}}));
        const auto darts = rows(QStringLiteral(
            "SELECT setseq, dartseq, score, ring, targetscore, targetring FROM gamesdarts ORDER BY rowid"));
        // The cork is set 0, aimed at the bull; the sets at this board are
        // numbered in turn, Bob's too.
        QCOMPARE(darts[0], (QVariantList{0, 1, 25, 2, 25, 1}));
        QCOMPARE(darts[4], (QVariantList{3, 0, 20, 3, 20, 3}));
        QCOMPARE(darts[9], (QVariantList{5, 2, 12, 2, 12, 2}));
    }

    // A file deleted, replaced or written over during a game is said once;
    // the darts not saved are kept and saved into another file, at once or
    // when quitting: a copy of all the file held, or, from a file written
    // over, a new file with the game, its player and the kept darts.
    void aLostFileIsSaidOnceAndItsDartsSavedElsewhere_data()
    {
        addTable<Loss, bool, int>({"loss", "saveAtOnce", "savedDarts"},
                                  {{"deleted, saved at once", Loss::Deleted, true, 1 + 3 + 6},
                                   {"replaced, saved at quitting", Loss::Replaced, false, 1 + 3 + 6},
                                   {"written over, saved at once", Loss::WrittenOver, true, 6},
                                   {"written over, saved at quitting", Loss::WrittenOver, false, 6}});
    }
    void aLostFileIsSaidOnceAndItsDartsSavedElsewhere()
    {
        QFETCH(Loss, loss);
        QFETCH(bool, saveAtOnce);
        QFETCH(int, savedDarts);
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        playSet({"T20", "T20", "T20"});
        playSet({"M", "M", "M"});
        loseFile(home_->dbPath, loss);
        const QString saved = home_->dir.filePath(QStringLiteral("Ann's saved darts.db"));
        messages_.choices = {saveAtOnce ? 0 : 1};
        messages_.savePaths = {saved};

        playSet({"S20", "S20", "S20"});
        playSet({"M", "M", "M"});
        playSet({"S19", "S19", "S19"});
        const QStringList told = messages_.texts(QStringLiteral("choice"));
        QCOMPARE(told.size(), 1);
        QVERIFY2(told[0].contains(QDir::toNativeSeparators(home_->dbPath)), qPrintable(told[0]));
        QVERIFY(messages_.texts(QStringLiteral("error")).isEmpty());
        QCOMPARE(program_->store().databasePath(), saveAtOnce ? saved : home_->dbPath);

        messages_.choices = {1};
        program_->shutDownProgram();
        QCOMPARE(messages_.texts(QStringLiteral("choice")).size(), saveAtOnce ? 1 : 2);
        QCOMPARE(messages_.texts(QStringLiteral("notice")).size(), 1);
        const OtherConnection file(saved, QStringLiteral("saved"));
        QCOMPARE(file.rows(QStringLiteral("SELECT id, name FROM players")),
                 (QList<QVariantList>{{1, "Ann"}}));
        QCOMPARE(file.rows(QStringLiteral("SELECT id, opponent, result FROM games")),
                 (QList<QVariantList>{{1, "Bob", ""}}));
        QCOMPARE(file.value(QStringLiteral("SELECT count(*) FROM gamesdarts WHERE games_id = 1")).toInt(), savedDarts);
        QCOMPARE(file.rows(QStringLiteral("SELECT setseq, score FROM gamesdarts ORDER BY rowid DESC LIMIT 1")),
                 (QList<QVariantList>{{5, 19}}));
    }

    // A file lost while darts wait for another program to free it is said
    // too: those darts can then be saved only into another file.
    void aFileLostWhileHeldIsSaid()
    {
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        auto locker = std::make_unique<OtherConnection>(home_->dbPath);
        QVERIFY(locker->exec({QStringLiteral("BEGIN EXCLUSIVE")}));
        playSet({"T20", "T20", "T20"});
        QCOMPARE(messages_.texts(QStringLiteral("error")).size(), 1);
        locker.reset();
        loseFile(home_->dbPath, Loss::Deleted);
        messages_.choices = {1};
        playSet({"M", "M", "M"});
        playSet({"S20", "S20", "S20"});
        const QStringList told = messages_.texts(QStringLiteral("choice"));
        QCOMPARE(told.size(), 1);
        QVERIFY2(told[0].contains(QStringLiteral("was deleted or moved away")), qPrintable(told[0]));
    }

    // Quitting while darts cannot be written asks whether to try again, to
    // save them into another file, or to quit without them; only the last
    // gives them up.
    void quittingWithDartsNotSavedAsks_data()
    {
        addTable<QList<int>, int, int>({"answers", "dartsInFile", "dartsSaved"},
                                       {{"try again, twice", {0, 0}, 1 + 6, 0},
                                        {"save to another file", {1}, 1 + 3, 1 + 6},
                                        {"quit without them", {2}, 1 + 3, 0}});
    }
    void quittingWithDartsNotSavedAsks()
    {
        QFETCH(QList<int>, answers);
        QFETCH(int, dartsInFile);
        QFETCH(int, dartsSaved);
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        playSet({"T20", "T20", "T20"});
        playSet({"M", "M", "M"});
        auto locker = std::make_unique<OtherConnection>(home_->dbPath);
        QVERIFY(locker->exec({QStringLiteral("BEGIN EXCLUSIVE")}));
        playSet({"S20", "S20", "S20"});
        QCOMPARE(messages_.texts(QStringLiteral("error")).size(), 1);

        const QString saved = home_->dir.filePath(QStringLiteral("saved.db"));
        messages_.choices = answers;
        messages_.savePaths = {saved};
        // The file is free again only once the question was asked twice.
        int asked = 0;
        messages_.whenChoosing = [&] {
            if (++asked == 2)
                locker.reset();
        };
        program_->shutDownProgram();
        messages_.whenChoosing = {};
        locker.reset();
        const QStringList questions = messages_.texts(QStringLiteral("choice"));
        QCOMPARE(questions.size(), answers.size());
        QVERIFY2(questions[0].startsWith(QStringLiteral("Tavrix could not save 3 darts of your games: ")),
                 qPrintable(questions[0]));
        QVERIFY2(questions[0].endsWith(QStringLiteral("[Try Again|Save to Another File...|Quit Without Them]")),
                 qPrintable(questions[0]));
        QCOMPARE(OtherConnection(home_->dbPath).value(QStringLiteral("SELECT count(*) FROM gamesdarts")).toInt(),
                 dartsInFile);
        QCOMPARE(QFile::exists(saved), dartsSaved > 0);
        if (dartsSaved > 0)
            QCOMPARE(OtherConnection(saved, QStringLiteral("saved")).value(QStringLiteral("SELECT count(*) FROM gamesdarts")).toInt(),
                     dartsSaved);
    }

    // 301, double in: the second dart doubles in, so the first does not
    // count; a set without a double leaves the score as it was; once in,
    // every dart counts.
    void a301WithDoubleIn()
    {
        control<QRadioButton>("opGame_1")->click();
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        playSet({"S20", "D10", "T20"});
        QCOMPARE(messages_.shown.last().text, QStringLiteral("Ann doubled in!"));
        playSet({"T20", "T20", "T20"});
        QCOMPARE(messages_.shown.last().text, QStringLiteral("Bob didn't double in."));
        playSet({"S20", "S20", "S20"});
        QCOMPARE(text("p2scoretext"), QStringLiteral("301\n221\n161"));
    }

    // Every state of the window fits an 800 x 600 screen, with a name of
    // thirty wide letters: idle, each game type against a person and against
    // the computer, a quit of each, a long 501, practice sets and a
    // count-down, review, play again after practice, and the "Human
    // Opponent" dialog in both network roles.
    void theWindowFitsASmallScreenInEveryState()
    {
        program_->session().currentPlayerName = QString(30, QLatin1Char('W'));
        window()->setPlayerName();
        window()->playController()->resetGame();
        expectFitsSmallScreen("idle");

        // The dialog, title bar aside, with each role's settings showing.
        QSize clientNeed, serverNeed;
        whenDialogShows([&](QWidget *dialog) {
            dialog->findChild<QCheckBox *>(QStringLiteral("Check1"))->click();
            dialog->findChild<QRadioButton *>(QStringLiteral("opBeClient"))->click();
            clientNeed = leastSize(dialog);
            dialog->findChild<QRadioButton *>(QStringLiteral("opBeServer"))->click();
            serverNeed = leastSize(dialog);
            dialog->findChild<QCheckBox *>(QStringLiteral("Check1"))->click();
            dialog->findChild<QPushButton *>(QStringLiteral("CancelButton"))->click();
        });
        control<QRadioButton>("opOpponent_1")->click();
        press(QStringLiteral("Start Game"));
        QTRY_VERIFY(!QApplication::activeModalWidget());
        expectFits(QStringLiteral("the dialog as client"), clientNeed);
        expectFits(QStringLiteral("the dialog as server"), serverNeed);

        const char *games[] = {"opGame_0", "opGame_1", "opGame_2"};
        for (const char *type : games) {
            const QString step = QLatin1String(type);
            control<QRadioButton>(type)->click();
            expectFitsSmallScreen(step + " chosen");
            startAgainst(QString(30, QLatin1Char('M')));
            corkAnnFirst();
            for (int set = 0; set < 4; ++set)
                playSet({"T20", "S19", "S1"});
            expectFitsSmallScreen(step + " against a person");
            messages_.answers = {true};
            QTest::mouseClick(control<QPushButton>("btnQuitGame"), Qt::LeftButton);
            expectFitsSmallScreen(step + " quit");

            for (const char *option : {"opOpponent_0", "opSkill_1", type})
                control<QRadioButton>(option)->click();
            control<QTimer>("ThrowTimer")->setInterval(0);
            press(QStringLiteral("Start Game"));
            throwDarts({QStringLiteral("B")});
            press(QStringLiteral("Confirm Dart"));
            press(QStringLiteral("Ok"));
            // The computer's darts, then Ann's turn.
            QTRY_COMPARE(game().currentThrower(), 2);
            expectFitsSmallScreen(step + " against the computer");
            messages_.answers = {true};
            QTest::mouseClick(control<QPushButton>("btnQuitGame"), Qt::LeftButton);
            expectFitsSmallScreen(step + " quit against the computer");
        }

        startAgainst(QString(30, QLatin1Char('M')));
        corkAnnFirst();
        for (int set = 0; set < 24; ++set)
            playSet({"S1", "S1", "S1"});
        expectFitsSmallScreen("a long 501");
        messages_.answers = {true};
        QTest::mouseClick(control<QPushButton>("btnQuitGame"), Qt::LeftButton);
        // Cricket, Standard rules: marks, points while the opponent is open.
        control<QRadioButton>("opGame_0")->click();
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        playSet({"T20", "T20", "S19"});
        QCOMPARE(text("lblP2Points_1") + ' ' + text("lblP2TotalPts"), QStringLiteral("60 60"));
        playSet({"T20", "M", "M"});
        // Bob closed 20: Ann's next treble 20 scores nothing.
        playSet({"T20", "S14", "M"});
        // Both have closed 20: it is greyed; the large figures follow the
        // points, and Bob's panel is the one lit.
        QVERIFY(control<QLabel>("lblCricketNumber_1")->font().strikeOut());
        QVERIFY(!control<QLabel>("lblCricketNumber_2")->font().strikeOut());
        QCOMPARE(text("p2BigScore") + ' ' + text("p2Average"), QStringLiteral("60 1/7 closed"));
        QCOMPARE(control<ScoreGlance>("ScoreGlance")->markedThrower(), 1);
        QCOMPARE(rows(QStringLiteral("SELECT count(*) FROM gamesdarts"
                                     " WHERE games_id = (SELECT max(id) FROM games)"))[0][0].toInt(),
                 1 + 6);
        expectFitsSmallScreen("cricket");
        messages_.answers = {true};
        action("mnuModePractice")->trigger();
        expectFitsSmallScreen("practice from a Cricket game");

        // Sets at a chosen target and at random ones, then a count-down.
        auto *go = control<QPushButton>("goButton");
        auto choose = [this](const char *list, const QString &item) {
            auto *box = control<QComboBox>(list);
            box->setCurrentIndex(box->findText(item));
        };
        choose("RingDrop", QStringLiteral("Double"));
        choose("ScoreDrop", QStringLiteral("20"));
        for (const char *darts : {"D20,S20,M", "S11,M,S16", "S8,T14,M"}) {
            QTest::mouseClick(go, Qt::LeftButton);
            // The read-outs follow the pointer over the board too.
            for (const char *spot : {"M", "OB", "S11", "T17"})
                QTest::mouseMove(control<BoardPicture>("Picture1"),
                                 BoardPicture::pictureFromBoard(at(QLatin1String(spot))).toPoint());
            expectFitsSmallScreen(QStringLiteral("practice pointer before %1").arg(QLatin1String(darts)));
            throwDarts(QString::fromLatin1(darts).split(','));
            expectFitsSmallScreen(QStringLiteral("practice darts %1").arg(QLatin1String(darts)));
            QTest::mouseClick(go, Qt::LeftButton);
            expectFitsSmallScreen(QStringLiteral("practice set %1 confirmed").arg(QLatin1String(darts)));
        }
        choose("RingDrop", QStringLiteral("-- Random --"));
        choose("ScoreDrop", QStringLiteral("-- Random --"));
        QTest::mouseClick(go, Qt::LeftButton);
        throwDarts({"S5", "M", "D3"});
        QTest::mouseClick(go, Qt::LeftButton);
        expectFitsSmallScreen("practice at random");
        choose("RingDrop", QStringLiteral("Triple!"));
        choose("ScoreDrop", QStringLiteral("-- Count Down  --"));
        QTest::mouseClick(go, Qt::LeftButton);
        for (const char *darts : {"OB,B,S20", "T20,T20,S20", "M,S7,M"}) {
            throwDarts(QString::fromLatin1(darts).split(','));
            QTest::mouseClick(go, Qt::LeftButton);
            expectFitsSmallScreen(QStringLiteral("count-down set %1").arg(QLatin1String(darts)));
        }
        action("mnuModeReview")->trigger();
        expectFitsSmallScreen("review");
        action("mnuModePlay")->trigger();
        expectFitsSmallScreen("play after practice");
    }

    // While a set is marked the thrower's large figures follow every dart
    // and every dart taken back, and a bust shows at once; the score column,
    // the Cricket marks and the alerts wait for "Ok". The finish line and the
    // target to shoot for read from across a room in an 800 x 600 window,
    // and grow with it.
    void theLargeFiguresFollowEveryDart()
    {
        auto *finish = control<FittingLabel>("glanceFinish");
        auto shown = [&] { return text("p2BigScore") + '|' + finish->text(); };
        auto bustShown = [&] { return control<QWidget>("p2Glance")->styleSheet().contains(QLatin1String("#a01818")); };
        auto pixels = [](const QFont &font) { return QFontInfo(font).pixelSize(); };
        fitSmallestScreen();
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        for (const char *darts : {"T20,T20,T20", "M,M,M", "T20,T20,S20", "M,M,M"})
            playSet(QString::fromLatin1(darts).split(','));
        QCOMPARE(shown(), QStringLiteral("181|"));
        QCOMPARE(text("p1GlanceName") + '|' + text("p2GlanceName"), QStringLiteral("Bob|Ann"));
        throwDarts({"T20"});
        QCOMPARE(shown(), QStringLiteral("121|T20 \u00B7 T15 \u00B7 D8"));
        QVERIFY(pixels(finish->fittedFont(finish->contentsRect().width())) >= 24);
        throwDarts({"T20"});
        QCOMPARE(shown() + '|' + text("p2Average"), QStringLiteral("61|T15 \u00B7 D8|Avg 165.00"));
        throwDarts({"T20"});
        QVERIFY(bustShown());
        QCOMPARE(shown(), QStringLiteral("BUST|"));
        key(Qt::Key_Backspace);
        QVERIFY(!bustShown());
        QCOMPARE(shown(), QStringLiteral("61|T15 \u00B7 D8"));
        throwDarts({"T20"});
        QCOMPARE(text("p2scoretext"), QStringLiteral("501\n321\n181"));
        QVERIFY(!messages_.texts(QStringLiteral("alert")).contains(QStringLiteral("Ann busted.")));
        press(QStringLiteral("Ok"));
        QCOMPARE(messages_.shown.last().text, QStringLiteral("Ann busted."));
        QCOMPARE(shown() + '|' + text("p2scoretext"), QStringLiteral("181||501\n321\n181*"));
        QVERIFY(!bustShown());

        resizeWindow(1280, 1024 - 32);
        QVERIFY(pixels(finish->font()) > 24);
        messages_.answers = {true};
        action("mnuModePractice")->trigger();
        QTest::mouseClick(control<QPushButton>("goButton"), Qt::LeftButton);
        QLabel *target = control<QLabel>("GeneralText");
        QVERIFY(text("GeneralText").startsWith(QStringLiteral("Shoot for ")));
        const int large = pixels(target->font());
        fitSmallestScreen();
        QVERIFY(pixels(target->font()) >= 24 && pixels(target->font()) < large);

        // Cricket: the points and the numbers closed; the marks board waits.
        action("mnuModePlay")->trigger();
        control<QRadioButton>("opGame_0")->click();
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        auto cricketShown = [&] { return text("p2BigScore") + ' ' + text("p2Average"); };
        throwDarts({"T20"});
        QCOMPARE(cricketShown(), QStringLiteral("0 1/7 closed"));
        throwDarts({"D20"});
        QCOMPARE(cricketShown(), QStringLiteral("40 1/7 closed"));
        key(Qt::Key_Backspace);
        QCOMPARE(cricketShown(), QStringLiteral("0 1/7 closed"));
        QVERIFY(control<QLabel>("P2ScoreImage_1")->pixmap().isNull());
        QCOMPARE(text("lblP2TotalPts"), QStringLiteral("0"));
    }

    // The Master wins a 501 against a player who misses every dart: its cork
    // after Ann's, each landing waited for with the board and the button
    // shut and every dart of a turn shown, the game's row and the records
    // beside the board. Each turn books the points its report names, and
    // each dart is described where its marker shows it, also a dart near a
    // wire whose nearest whole pixel would score otherwise.
    void a501AgainstTheMaster()
    {
        program_->session().random.seed(11); // four darts near a wire
        startAgainstComputer("opGame_2", "opSkill_2");
        throwDarts({QStringLiteral("B")});
        press(QStringLiteral("Confirm Dart"));
        press(QStringLiteral("Ok"));
        int offPixelDarts = 0;
        int booked = 501;
        for (int turn = 0; turn < 200 && !QTest::currentTestFailed() && startButton()->text() != "Play Again"; ++turn) {
            if (game().currentThrower() == 2) {
                playSet({"M", "M", "M"});
                continue;
            }
            QVERIFY(!startButton()->isEnabled() && !control<BoardPicture>("Picture1")->isEnabled());
            QTRY_VERIFY(startButton()->isEnabled());
            QCOMPARE(shownCPips(), game().dartsPlaced());
            const QString report = gameText();
            for (int i = 0; i < game().dartsPlaced(); ++i) {
                const auto *marker = control<DartMarker>(qPrintable(QStringLiteral("CPips_%1").arg(i)));
                const BoardPoint dart = BoardInput::markerPoint(marker);
                QVERIFY2(report.contains(dartDescriptionFromXY(dart.x, dart.y)), qPrintable(report));
                const BoardPoint pixel = onMarkerGrid(dart, flightMarkerSide);
                offPixelDarts += scoreFromXY(dart.x, dart.y) != scoreFromXY(pixel.x, pixel.y);
            }
            const int reported = QRegularExpression(QStringLiteral(" for (\\d+) points")).match(report).captured(1).toInt();
            press(QStringLiteral("Ok"));
            // A bust books nothing.
            const int left = booked - reported;
            const bool won = startButton()->text() == "Play Again";
            QCOMPARE(game().glance(1).figure.toInt(), won || left > 1 ? left : booked);
            booked = game().glance(1).figure.toInt();
        }
        QVERIFY(offPixelDarts > 0);
        QVERIFY(!sounds_.played.contains(QStringLiteral("splat.wav")));
        QVERIFY(!sounds_.played.contains(QStringLiteral("boing2.wav")));
        QCOMPARE(messages_.shown.last().title + ' ' + messages_.shown.last().text, QStringLiteral("Good Game! I won!"));
        QCOMPARE(gameText(), QStringLiteral("\nI won that one.\n\nClick \"Play Again\" to play the "
                                            "same game, or \"Quit Game\" to change options."));

        auto games = rows(QStringLiteral(
            "SELECT gametype, skill, opponent, result, throws, points, bestset, outset FROM games"));
        QCOMPARE(games.size(), 1);
        const int annDarts = games[0].takeAt(4).toInt();
        QCOMPARE(games[0], (QVariantList{3, 3, "Computer", "L", 0, 0, 0}));
        QCOMPARE(rows(QStringLiteral("SELECT count(*) FROM gamesdarts"))[0][0].toInt(), 1 + annDarts);

        QCOMPARE(text("rstatsText"), QStringLiteral("vs Virtual Pro\nWon: 0  Lost: 1\nBest Leg: 99\nBest out: 0"));
    }

    // The computer's Cricket turn lists its darts without points; quitting
    // while it throws stops it and goes back to the options.
    void computerCricketTurnsAndQuitting()
    {
        startAgainstComputer("opGame_0", "opSkill_0");
        throwDarts({QStringLiteral("M")});
        press(QStringLiteral("Confirm Dart"));
        press(QStringLiteral("Ok"));
        QVERIFY(!startButton()->isEnabled());
        QTRY_VERIFY(startButton()->isEnabled());
        const QString report = gameText();
        QVERIFY(report.startsWith(QStringLiteral("\nI threw: ")) && !report.contains(QStringLiteral(" for ")));
        QVERIFY(!control<QPushButton>("btnUndoDart")->isEnabled());
        key(Qt::Key_Backspace); // the computer's darts are its own
        QCOMPARE(shownCPips(), 3);
        QCOMPARE(text("rstatsText"), QStringLiteral("vs Virtual Beginner\nWon: 0  Lost: 0"));
        press(QStringLiteral("Ok"));
        playSet({"M", "M", "M"});

        // Quit after the first dart of the computer's next turn.
        QTRY_COMPARE(shownCPips(), 1);
        messages_.answers = {true};
        QTest::mouseClick(control<QPushButton>("btnQuitGame"), Qt::LeftButton);
        QVERIFY(!control<QTimer>("ThrowTimer")->isActive());
        QTest::qWait(20);
        QCOMPARE(shownCPips(), 0);
        QCOMPARE(startButton()->text(), QStringLiteral("Start Game"));
    }

    // A game at one board played from the keyboard. Enter does what the main
    // button says; the focus rests on that button whenever it can be clicked
    // and never falls on "Quit Game" when it cannot (Space used to quit
    // there); a modal box keeps Enter to itself. Ctrl+Z, Backspace and "Undo
    // dart" take back the last dart of a set as though it had never been
    // thrown, never a cork; only the darts kept are recorded.
    void aGameFromTheKeyboardWithDartsTakenBack()
    {
        auto *quit = control<QPushButton>("btnQuitGame");
        auto *undo = control<QPushButton>("btnUndoDart");
        auto focusReady = [&] { QCOMPARE(window()->focusWidget(), startButton()); };
        auto focusNotOnQuit = [&] { QVERIFY(window()->focusWidget() != quit); };
        control<QRadioButton>("opOpponent_1")->click();
        key(Qt::Key_Z, Qt::ControlModifier); // nothing to take back yet
        answerOpponentName(QStringLiteral("Bob"));
        QTest::keyClick(window(), Qt::Key_Return);
        QCOMPARE(startButton()->text(), QStringLiteral("Confirm Dart"));
        focusNotOnQuit();
        throwDarts({QStringLiteral("S3")});
        focusReady();
        key(Qt::Key_Z, Qt::ControlModifier); // the cork dart stays
        QVERIFY(shown("CPips_0") && !undo->isEnabled());
        key(Qt::Key_Return);
        throwDarts({QStringLiteral("B")});
        QTest::keyClick(window()->focusWidget(), Qt::Key_Space);
        QCOMPARE(game().phase(), GamePhase::CorkResult);
        focusReady();
        key(Qt::Key_Return);
        focusNotOnQuit();

        const QString prompt = gameText();
        throwDarts({"T20"});
        const QString afterOne = gameText();
        throwDarts({"T19"});
        key(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!shown("Pips_1") && shown("Pips_0"));
        QCOMPARE(gameText(), afterOne);
        QVERIFY(startButton()->isEnabled() && undo->isEnabled());
        key(Qt::Key_Backspace);
        QCOMPARE(gameText(), prompt);
        QVERIFY(!startButton()->isEnabled() && !undo->isEnabled());
        key(Qt::Key_Backspace); // nothing left to take back
        throwDarts({"S5", "S1", "T20"});
        QTest::mouseClick(undo, Qt::LeftButton);
        throwDarts({"D10"});
        // A click leaves the focus on the button it clicked, which is then
        // disabled for the next turn.
        QTest::mouseClick(startButton(), Qt::LeftButton);
        QVERIFY(!startButton()->isEnabled() && !undo->isEnabled());
        focusNotOnQuit();
        QCOMPARE(rows(QStringLiteral("SELECT setseq, dartseq, score, ring FROM gamesdarts WHERE setseq > 0")),
                 (QList<QVariantList>{{1, 0, 5, 1}, {1, 1, 1, 1}, {1, 2, 10, 2}}));

        throwDarts({"M", "M", "M"});
        // The alert box, one box for every alert, shows the newest texts and
        // returns however it is hidden: by "OK", or from outside.
        MyAlertBox *box = window()->alertBox();
        for (const auto &[message, title] : {std::pair("Busted.", "Ugh."), std::pair("Too many.", "Rats!")}) {
            QTimer::singleShot(0, [&] {
                QTRY_VERIFY(box->isVisible());
                QTest::keyClick(window(), Qt::Key_Return);
                QTest::keyClick(window(), Qt::Key_Enter);
                QCOMPARE(box->windowTitle() + '|' + box->findChild<QLabel *>(QStringLiteral("Label1"))->text(),
                         QString::fromLatin1(title) + '|' + QString::fromLatin1(message));
                if (QLatin1String(title) == QLatin1String("Rats!"))
                    box->hide();
                else
                    box->findChild<QPushButton *>(QStringLiteral("OKButton"))->click();
            });
            box->alert(QString::fromLatin1(message), QString::fromLatin1(title));
        }
        QCOMPARE(game().currentThrower(), 1);
        key(Qt::Key_Enter);
        QCOMPARE(game().currentThrower(), 2);

        // Quit takes no focus from a click: a later Space cannot quit.
        messages_.answers = {false};
        QTest::mouseClick(quit, Qt::LeftButton);
        focusNotOnQuit();
        QCOMPARE(game().phase(), GamePhase::Turn);
    }
};

QTEST_MAIN(TestGames)
#include "tst_games.moc"
