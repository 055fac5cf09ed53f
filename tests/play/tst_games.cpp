// Whole games at one board, played with real clicks on the board picture and
// the buttons, then checked in the statistics database.

#include "../support/board_points.h"
#include "../support/fake_messages.h"
#include "../support/sound_log.h"
#include "../support/test_home.h"
#include "board/board_input.h"
#include "board/board_picture.h"
#include "board/dart_marker.h"
#include "dialogs/alert_box.h"
#include "play/play_controller.h"
#include "play/score_glance.h"
#include "startup/darts_window.h"
#include "startup/program.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace tavrix;

namespace {

// The picture pixel of a point of an area ("T20", "D12", "B", "M" a miss).
QPoint pixel(const QString &code)
{
    return BoardPicture::pictureFromBoard(at(code)).toPoint();
}

} // namespace

class TestGames : public QObject {
    Q_OBJECT

    std::unique_ptr<TestHome> home_;
    FakeMessages messages_;
    SoundLog sounds_;
    std::unique_ptr<Program> program_;
    BoardPicture *picture_ = nullptr;

    template <typename T>
    T *control(const char *name)
    {
        return findControl<T>(program_->window(), name);
    }
    const GameSession &game() { return program_->window()->playController()->game(); }
    QPushButton *startButton() { return control<QPushButton>("btnStartGame"); }
    QString gameText() { return control<QLabel>("gameText")->text(); }
    void press(const QString &caption)
    {
        QCOMPARE(startButton()->text(), caption);
        QVERIFY(startButton()->isEnabled());
        QTest::mouseClick(startButton(), Qt::LeftButton);
    }
    void throwDarts(const QStringList &codes)
    {
        for (const QString &code : codes)
            QTest::mouseClick(picture_, Qt::LeftButton, {}, pixel(code));
    }
    // Starts a game against a person at this board; Ann is the local player.
    void startAgainst(const QString &opponent)
    {
        control<QRadioButton>("opOpponent_1")->click();
        answerOpponentName(opponent);
        press(QStringLiteral("Start Game"));
    }
    // Both corks: the opponent's far from the bull, Ann's close to it.
    void corkAnnFirst()
    {
        throwDarts({QStringLiteral("S3")});
        press(QStringLiteral("Confirm Dart"));
        throwDarts({QStringLiteral("B")});
        press(QStringLiteral("Confirm Dart"));
        press(QStringLiteral("Ok"));
    }
    // Starts a game against the computer at a level, with its dart every
    // tick of a timer that no longer waits a second.
    void startAgainstComputer(const char *game, const char *skill)
    {
        control<QRadioButton>("opOpponent_0")->click();
        control<QRadioButton>(skill)->click();
        control<QRadioButton>(game)->click();
        QTimer *timer = control<QTimer>("ThrowTimer");
        QCOMPARE(timer->interval(), 1000);
        timer->setInterval(0);
        press(QStringLiteral("Start Game"));
        QVERIFY(gameText().contains(QStringLiteral("\nAnn: Throw the cork.")));
    }
    // Waits for the computer's report; the board and the button stay shut
    // while it throws.
    QString computerReport()
    {
        [&] {
            QVERIFY(!startButton()->isEnabled());
            QVERIFY(!picture_->isEnabled());
            QTRY_VERIFY(startButton()->isEnabled());
        }();
        return gameText();
    }
    int shownCPips()
    {
        int shown = 0;
        for (int i = 0; i < 3; ++i)
            shown += control<DartMarker>(qPrintable(QStringLiteral("CPips_%1").arg(i)))->isVisible();
        return shown;
    }
    // A whole 501 against the Master in which Ann misses every dart; returns
    // the computer's reports in order.
    QStringList loseA501ToTheMaster()
    {
        QStringList reports;
        startAgainstComputer("opGame_2", "opSkill_2");
        throwDarts({QStringLiteral("B")});
        press(QStringLiteral("Confirm Dart"));
        reports.append(gameText());
        press(QStringLiteral("Ok"));
        for (int turn = 0; turn < 200 && !QTest::currentTestFailed()
                             && startButton()->text() != QLatin1String("Play Again");
             ++turn) {
            if (game().currentThrower() == 2) {
                throwDarts({"M", "M", "M"});
            } else {
                // The window shows the darts its report lists.
                const QString report = computerReport();
                [&] { QCOMPARE(shownCPips(), report.count(QStringLiteral(", ")) + 1); }();
                reports.append(report);
            }
            press(QStringLiteral("Ok"));
        }
        return reports;
    }
    // A key pressed on the main window. The offscreen platform does not give
    // the activation back to it when a dialog closes, so it is activated here.
    void undoKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        program_->window()->activateWindow();
        [&] { QTRY_VERIFY(program_->window()->isActiveWindow()); }();
        QTest::keyClick(program_->window(), key, modifiers);
    }
    QList<QVariantList> rows(const QString &sql)
    {
        QSqlQuery query(program_->store().connection());
        [&] { QVERIFY2(query.exec(sql), qPrintable(query.lastError().text())); }();
        QList<QVariantList> result;
        while (query.next()) {
            QVariantList row;
            for (int i = 0; i < query.record().count(); ++i)
                row.append(query.value(i));
            result.append(row);
        }
        return result;
    }

    // The window's least size, title bar aside, fits an 800 x 600 screen.
    void expectFitsSmallScreen(const char *state)
    {
        QWidget *window = program_->window();
        window->layout()->activate();
        const QSize need = window->minimumSizeHint().expandedTo(window->minimumSize());
        QVERIFY2(need.width() <= 800 && need.height() <= 600 - 32,
                 qPrintable(QStringLiteral("%1 needs %2 x %3").arg(QLatin1String(state)).arg(need.width())
                                .arg(need.height())));
    }

private slots:
    void init()
    {
        home_ = std::make_unique<TestHome>(QStringList{QStringLiteral("Ann")});
        messages_ = {};
        sounds_ = {};
        program_ = std::make_unique<Program>(messages_, home_->dbPath, &sounds_);
        QVERIFY(program_->Main());
        program_->session().random.seed(7);
        picture_ = control<BoardPicture>("Picture1");
    }
    void cleanup() { program_.reset(); }

    // 501, double out: Ann wins on double 12 after 180, 180, 141.
    void a501FinishedOnADouble()
    {
        control<QRadioButton>("opGame_2")->click();
        startAgainst(QStringLiteral("Bob O'Neil"));
        QVERIFY(gameText().contains(QStringLiteral("Bob O'Neil: Throw the cork.")));
        corkAnnFirst();
        QCOMPARE(game().currentThrower(), 2);

        const QStringList miss{"M", "M", "M"};
        throwDarts({"T20", "T20", "T20"});
        press(QStringLiteral("Ok"));
        throwDarts(miss);
        press(QStringLiteral("Ok"));
        throwDarts({"T20", "T20", "T20"});
        press(QStringLiteral("Ok"));
        throwDarts(miss);
        press(QStringLiteral("Ok"));
        throwDarts({"T20", "T19", "D12"});
        press(QStringLiteral("Ok"));

        QCOMPARE(control<QLabel>("p2scoretext")->text(), QStringLiteral("501\n321\n141\nWinner!"));
        // The large figures: Ann's 501 in nine darts, Bob's nine misses.
        QCOMPARE(control<QLabel>("p2BigScore")->text() + ' ' + control<QLabel>("p2Average")->text(),
                 QStringLiteral("0 Avg 167.00"));
        QCOMPARE(control<QLabel>("p1BigScore")->text() + ' ' + control<QLabel>("p1Average")->text(),
                 QStringLiteral("501 Avg 0.00"));
        QCOMPARE(control<QLabel>("p1ScoreText")->text(), QStringLiteral("501**"));
        QCOMPARE(startButton()->text(), QStringLiteral("Play Again"));
        QCOMPARE(messages_.shown.last().text, QStringLiteral("Ann won!"));
        QVERIFY(sounds_.played.contains(QStringLiteral("applause140.wav:wait")));
        QCOMPARE(sounds_.played.last(), QStringLiteral("applausewin.wav"));

        const auto games = rows(QStringLiteral(
            "SELECT gametype, skill, opponent, result, throws, points, bestset, outset FROM games"));
        QCOMPARE(games.size(), 1);
        QCOMPARE(games[0], (QVariantList{3, 1, "Bob O'Neil", "W", 9, 501, 180, 141}));
        const auto darts = rows(QStringLiteral(
            "SELECT setseq, dartseq, score, ring, targetscore, targetring FROM gamesdarts ORDER BY rowid"));
        QCOMPARE(darts.size(), 10);
        QCOMPARE(darts[0], (QVariantList{0, 1, 25, 2, 25, 1}));
        QCOMPARE(darts[1], (QVariantList{1, 0, 20, 3, 20, 3}));
        QCOMPARE(darts[4], (QVariantList{3, 0, 20, 3, 20, 3}));
        QCOMPARE(darts[9], (QVariantList{5, 2, 12, 2, 12, 2}));
    }

    // Another program holds the statistics file while sets are confirmed:
    // the window waits only a moment, says so once, keeps the darts and the
    // game's end, and writes them all once the file is free.
    void aLockedDatabaseLosesNoSet()
    {
        control<QRadioButton>("opGame_2")->click();
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        throwDarts({"T20", "T20", "T20"});
        press(QStringLiteral("Ok"));
        throwDarts({"M", "M", "M"});
        press(QStringLiteral("Ok"));

        QSqlDatabase locker = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("locker"));
        locker.setDatabaseName(home_->dbPath);
        QVERIFY(locker.open());
        QSqlQuery lock(locker);
        QVERIFY(lock.exec(QStringLiteral("BEGIN EXCLUSIVE")));
        QElapsedTimer waited;
        waited.start();
        throwDarts({"T20", "T20", "T20"});
        press(QStringLiteral("Ok"));
        QVERIFY(waited.elapsed() < 2500);
        throwDarts({"M", "M", "M"});
        press(QStringLiteral("Ok"));
        throwDarts({"T20", "T19", "D12"});
        press(QStringLiteral("Ok"));
        QCOMPARE(startButton()->text(), QStringLiteral("Play Again"));
        QStringList errors;
        for (const auto &shown : std::as_const(messages_.shown)) {
            if (shown.kind == QLatin1String("error"))
                errors << shown.text;
        }
        QCOMPARE(errors.size(), 1);
        QVERIFY(errors[0].contains(QStringLiteral("in use by another program")));

        QVERIFY(lock.exec(QStringLiteral("ROLLBACK")));
        lock = QSqlQuery();
        locker.close();
        locker = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("locker"));
        control<QTimer>("saveRetryTimer")->setInterval(10);
        QTRY_COMPARE(rows(QStringLiteral("SELECT count(*) FROM gamesdarts"))[0][0].toInt(), 1 + 9);
        QCOMPARE(rows(QStringLiteral("SELECT result, throws, outset FROM games"))[0],
                 (QVariantList{"W", 9, 141}));
        QVERIFY(!control<QTimer>("saveRetryTimer")->isActive());
    }

    // 301, double in: the second dart doubles in, so the first does not count.
    void a301WithDoubleIn()
    {
        control<QRadioButton>("opGame_1")->click();
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        QVERIFY(gameText().contains(QStringLiteral("You have not yet doubled in.")));
        throwDarts({"S20", "D10", "T20"});
        press(QStringLiteral("Ok"));
        QCOMPARE(messages_.shown.last().text, QStringLiteral("Ann doubled in!"));
        QCOMPARE(control<QLabel>("p2scoretext")->text(), QStringLiteral("301\n221"));
        throwDarts({"T20", "T20", "T20"});
        press(QStringLiteral("Ok"));
        QCOMPARE(messages_.shown.last().text, QStringLiteral("Bob didn't double in."));
        QCOMPARE(control<QLabel>("p1ScoreText")->text(), QStringLiteral("301*"));
        // Quitting asks first and goes back to the options.
        messages_.answers = {true};
        QTest::mouseClick(control<QPushButton>("btnQuitGame"), Qt::LeftButton);
        QCOMPARE(startButton()->text(), QStringLiteral("Start Game"));
        QVERIFY(!control<QWidget>("FraGame")->isHidden());
    }

    // Cricket, Standard rules: marks, points while the opponent is open.
    void aCricketGame()
    {
        control<QRadioButton>("opGame_0")->click();
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        throwDarts({"T20", "T20", "S19"});
        press(QStringLiteral("Ok"));
        QCOMPARE(control<QLabel>("lblP2Points_1")->text(), QStringLiteral("60"));
        QCOMPARE(control<QLabel>("lblP2TotalPts")->text(), QStringLiteral("60"));
        QVERIFY(!control<QLabel>("P2ScoreImage_1")->pixmap().isNull());
        throwDarts({"T20", "M", "M"});
        press(QStringLiteral("Ok"));
        // Bob closed 20: Ann's next treble 20 scores nothing.
        throwDarts({"T20", "S14", "M"});
        press(QStringLiteral("Ok"));
        // Both have closed 20: it is greyed; the large figures follow the
        // points, and Bob's panel is the one lit.
        QVERIFY(control<QLabel>("lblCricketNumber_1")->font().strikeOut());
        QVERIFY(!control<QLabel>("lblCricketNumber_2")->font().strikeOut());
        QCOMPARE(control<QLabel>("p2BigScore")->text() + ' ' + control<QLabel>("p2Average")->text(),
                 QStringLiteral("60 1/7 closed"));
        QCOMPARE(control<ScoreGlance>("ScoreGlance")->markedThrower(), 1);
        const auto darts = rows(QStringLiteral("SELECT count(*) FROM gamesdarts"));
        QCOMPARE(darts[0][0].toInt(), 1 + 6);
    }

    // Every state of the window fits an 800 x 600 screen, with a name of
    // thirty wide letters and a 501 long enough to fill its columns.
    void theWindowFitsASmallScreen()
    {
        program_->session().currentPlayerName = QString(30, QLatin1Char('W'));
        program_->window()->setPlayerName();
        program_->window()->playController()->resetGame();
        expectFitsSmallScreen("idle");
        control<QRadioButton>("opGame_2")->click();
        startAgainst(QString(30, QLatin1Char('M')));
        expectFitsSmallScreen("cork");
        corkAnnFirst();
        for (int set = 0; set < 24; ++set) {
            throwDarts({"S1", "S1", "S1"});
            press(QStringLiteral("Ok"));
        }
        QCOMPARE(control<QLabel>("p1ScoreText")->text().count('\n'), 12);
        expectFitsSmallScreen("a long 501");
        messages_.answers = {true};
        QTest::mouseClick(control<QPushButton>("btnQuitGame"), Qt::LeftButton);
        control<QRadioButton>("opGame_0")->click();
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        expectFitsSmallScreen("cricket");
        messages_.answers = {true};
        program_->window()->findChild<QAction *>(QStringLiteral("mnuModePractice"))->trigger();
        expectFitsSmallScreen("practice");
        program_->window()->findChild<QAction *>(QStringLiteral("mnuModeReview"))->trigger();
        expectFitsSmallScreen("review");
    }

    // The Master wins a 501 against a player who misses every dart: the
    // game's row, the records beside the board, and the same seed playing
    // the same game again.
    void a501AgainstTheMaster()
    {
        const QStringList reports = loseA501ToTheMaster();
        QCOMPARE(startButton()->text(), QStringLiteral("Play Again"));
        QCOMPARE(messages_.shown.last().text, QStringLiteral("I won!"));
        QCOMPARE(messages_.shown.last().title, QStringLiteral("Good Game!"));
        const QString column = control<QLabel>("p1ScoreText")->text();
        QVERIFY(column.startsWith(QStringLiteral("501\n")) && column.endsWith(QStringLiteral("\nWinner!")));
        QCOMPARE(gameText(), QStringLiteral("\nI won that one.\n\nClick \"Play Again\" to play the "
                                            "same game, or \"Quit Game\" to change options."));

        auto games = rows(QStringLiteral(
            "SELECT gametype, skill, opponent, result, throws, points, bestset, outset FROM games"));
        QCOMPARE(games.size(), 1);
        const int annDarts = games[0].takeAt(4).toInt();
        QCOMPARE(games[0], (QVariantList{3, 3, "Computer", "L", 0, 0, 0}));
        QVERIFY(annDarts > 0 && annDarts % 3 == 0);
        const auto darts = rows(QStringLiteral("SELECT count(*) FROM gamesdarts"));
        QCOMPARE(darts[0][0].toInt(), 1 + annDarts);

        const QString record = QStringLiteral("vs Virtual Pro\nWon: 0  Lost: 1\nBest Leg: 99\nBest out: 0");
        QCOMPARE(control<QLabel>("rstatsText")->text(), record);
        QCOMPARE(control<QLabel>("ostatsText")->text(), record);
        QVERIFY(control<QLabel>("ostatTitleLabel")->isVisible());

        // The same seed throws the same game.
        cleanup();
        init();
        QCOMPARE(loseA501ToTheMaster(), reports);
    }

    // Ctrl+Z, Backspace and "Undo dart" take back the last dart of a set as
    // though it had never been thrown; only the darts kept are recorded.
    void undoingDarts()
    {
        auto *undo = control<QPushButton>("btnUndoDart");
        auto shown = [&](const char *marker) { return control<DartMarker>(marker)->isVisible(); };
        QVERIFY(!undo->isEnabled());
        control<QRadioButton>("opGame_2")->click();
        startAgainst(QStringLiteral("Bob"));
        throwDarts({QStringLiteral("S3")});
        undoKey(Qt::Key_Z, Qt::ControlModifier); // the cork dart stays
        QVERIFY(shown("CPips_0"));
        QVERIFY(!undo->isEnabled());
        press(QStringLiteral("Confirm Dart"));
        throwDarts({QStringLiteral("B")});
        press(QStringLiteral("Confirm Dart"));
        press(QStringLiteral("Ok"));

        const QString prompt = gameText();
        throwDarts({"T20"});
        const QString afterOne = gameText();
        const QPoint target = control<DartMarker>("TargetPips_1")->pos();
        throwDarts({"T19"});
        QVERIFY(undo->isEnabled());
        undoKey(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!shown("Pips_1") && shown("Pips_0"));
        QCOMPARE(gameText(), afterOne);
        QCOMPARE(game().dartsPlaced(), 1);
        QCOMPARE(control<DartMarker>("TargetPips_1")->pos(), target);
        QVERIFY(shown("TargetPips_1") && !shown("TargetPips_2"));
        QVERIFY(startButton()->isEnabled() && undo->isEnabled());
        undoKey(Qt::Key_Backspace);
        QCOMPARE(gameText(), prompt);
        QVERIFY(!startButton()->isEnabled() && !undo->isEnabled());
        undoKey(Qt::Key_Backspace); // nothing left to take back
        QCOMPARE(game().dartsPlaced(), 0);

        throwDarts({"S5", "S1", "T20"});
        QTest::mouseClick(undo, Qt::LeftButton);
        QVERIFY(!shown("Pips_2"));
        throwDarts({"D10"});
        press(QStringLiteral("Ok"));
        QVERIFY(!undo->isEnabled());
        QCOMPARE(rows(QStringLiteral("SELECT setseq, dartseq, score, ring FROM gamesdarts WHERE setseq > 0")),
                 (QList<QVariantList>{{1, 0, 5, 1}, {1, 1, 1, 1}, {1, 2, 10, 2}}));
        QCOMPARE(control<QLabel>("p2scoretext")->text(), QStringLiteral("501\n475"));
    }

    // The computer's Cricket turn lists its darts without points; quitting
    // while it throws stops it.
    void computerCricketTurnsAndQuitting()
    {
        startAgainstComputer("opGame_0", "opSkill_0");
        throwDarts({QStringLiteral("M")});
        press(QStringLiteral("Confirm Dart"));
        QVERIFY(gameText().contains(QStringLiteral("I go first")));
        press(QStringLiteral("Ok"));
        const QString report = computerReport();
        QVERIFY(report.startsWith(QStringLiteral("\nI threw: ")));
        QVERIFY(!report.contains(QStringLiteral(" for ")));
        QVERIFY(!control<QPushButton>("btnUndoDart")->isEnabled());
        undoKey(Qt::Key_Backspace); // the computer's darts are its own
        QCOMPARE(shownCPips(), 3);
        QCOMPARE(control<QLabel>("rstatsText")->text(), QStringLiteral("vs Virtual Beginner\nWon: 0  Lost: 0"));
        press(QStringLiteral("Ok"));
        QCOMPARE(game().currentThrower(), 2);
        throwDarts({"M", "M", "M"});
        press(QStringLiteral("Ok"));

        // Quit after the first dart of the computer's next turn.
        QTimer *timer = control<QTimer>("ThrowTimer");
        QTRY_COMPARE(shownCPips(), 1);
        messages_.answers = {true};
        QTest::mouseClick(control<QPushButton>("btnQuitGame"), Qt::LeftButton);
        QVERIFY(!timer->isActive());
        QTest::qWait(20);
        QCOMPARE(shownCPips(), 0);
        QCOMPARE(startButton()->text(), QStringLiteral("Start Game"));
        QVERIFY(control<QLabel>("rstatsText")->isHidden());
    }

    // A game at one board played from the keyboard: Enter does what the main
    // button says; the focus rests on that button whenever it can be clicked
    // and never falls on "Quit Game" when it cannot (Space used to quit
    // there); a modal box keeps Enter to itself.
    void theKeyboardFollowsTheMainButton()
    {
        Darts *window = program_->window();
        // The test platform does not give the activation back when a dialog closes.
        auto activate = [window] {
            window->activateWindow();
            QTRY_COMPARE(QApplication::activeWindow(), window);
        };
        activate();
        auto *quit = control<QPushButton>("btnQuitGame");
        auto enter = [window] { QTest::keyClick(window, Qt::Key_Return); };
        auto focusReady = [&] { QCOMPARE(window->focusWidget(), startButton()); };
        auto focusNotOnQuit = [&] { QVERIFY(window->focusWidget() != quit); };

        control<QRadioButton>("opOpponent_1")->click();
        answerOpponentName(QStringLiteral("Bob"));
        enter();
        QCOMPARE(startButton()->text(), QStringLiteral("Confirm Dart"));
        QVERIFY(!startButton()->isEnabled());
        focusNotOnQuit();
        activate();
        throwDarts({QStringLiteral("S3")});
        focusReady();
        enter();
        QCOMPARE(game().currentThrower(), 2);
        focusNotOnQuit();
        throwDarts({QStringLiteral("B")});
        focusReady();
        QTest::keyClick(window->focusWidget(), Qt::Key_Space);
        QCOMPARE(game().phase(), GamePhase::CorkResult);
        focusReady();
        enter();
        QCOMPARE(game().phase(), GamePhase::Turn);
        focusNotOnQuit();

        // A click leaves the focus on the button it clicked, which is then
        // disabled for the next turn.
        throwDarts({"T20", "T20", "T20"});
        focusReady();
        QTest::mouseClick(startButton(), Qt::LeftButton);
        QCOMPARE(game().currentThrower(), 1);
        QVERIFY(!startButton()->isEnabled());
        focusNotOnQuit();

        throwDarts({"M", "M", "M"});
        QVERIFY(startButton()->isEnabled());
        MyAlertBox *box = window->alertBox();
        QTimer::singleShot(0, [&] {
            QTRY_VERIFY(box->isVisible());
            QTest::keyClick(window, Qt::Key_Return);
            QTest::keyClick(window, Qt::Key_Enter);
            box->findChild<QPushButton *>(QStringLiteral("OKButton"))->click();
        });
        box->alert(QStringLiteral("Busted."), QStringLiteral("Ugh."));
        QCOMPARE(game().currentThrower(), 1);
        QCOMPARE(game().dartsPlaced(), 3);

        activate();
        QTest::keyClick(window, Qt::Key_Enter);
        QCOMPARE(game().currentThrower(), 2);
        QCOMPARE(control<QLabel>("p1ScoreText")->text(), QStringLiteral("501*"));

        // Quit takes no focus from a click: a later Space cannot quit.
        messages_.answers = {false};
        QTest::mouseClick(quit, Qt::LeftButton);
        QCOMPARE(messages_.titles(), QStringList{QStringLiteral("Quit Game?")});
        focusNotOnQuit();
        QCOMPARE(game().phase(), GamePhase::Turn);
    }
};

QTEST_MAIN(TestGames)
#include "tst_games.moc"
