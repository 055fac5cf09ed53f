// Two copies of the program in one process, each with its own home and
// database, playing each other over 127.0.0.1: the greeting and the game
// options, the cork and its tie, turns shown and scored on both sides, the
// win and its records, "Play Again", chat, quitting, and a peer that leaves or
// misbehaves at any point without breaking the copy left behind.

#include "../support/board_points.h"
#include "../support/fake_messages.h"
#include "../support/network_play.h"
#include "../support/sound_log.h"
#include "../support/sql_rows.h"
#include "../support/test_home.h"
#include "ui/board/board_picture.h"
#include "ui/board/dart_marker.h"
#include "core/games/play_rules.h"
#include "ui/net/chat_dialog.h"
#include "ui/net/connection_box.h"
#include "ui/net/network_game.h"
#include "ui/play/play_controller.h"
#include "ui/startup/darts_window.h"
#include "ui/startup/program.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTcpSocket>

using namespace tavrix;

namespace {

using Copy = NetworkCopy;

} // namespace

class TestNetworkGame : public QObject {
    Q_OBJECT

    std::unique_ptr<Copy> ann_; // the server
    std::unique_ptr<Copy> bob_; // the client

    // Ann waits, Bob calls; both games stand at the cork.
    void connectBoth()
    {
        ann_ = std::make_unique<Copy>(QStringLiteral("Ann"));
        bob_ = std::make_unique<Copy>(QStringLiteral("Bob"));
        const quint16 port = freePort();
        QVERIFY(ann_->startNetworkGame(true, port));
        QVERIFY(bob_->startNetworkGame(false, port));
        QTRY_VERIFY(ann_->net().established() && bob_->net().established());
        QTRY_COMPARE(bob_->game().options().type, GameType::X01_501);
        QVERIFY(ann_->control<QLabel>("lblNetworkActive")->isVisible());
    }
    // Mirror-image corks, the same distance from the bull to the last bit:
    // the tie goes to the client's player on both copies. Bob clicks "Ok"
    // first and waits for Ann.
    void corkTie()
    {
        const BoardPoint bob{40, 31}, ann{-40, 31};
        bob_->throwAt(bob);
        QVERIFY(bob_->press(QStringLiteral("Confirm Dart")));
        QTRY_VERIFY(ann_->game().phase() == GamePhase::CorkAwaited && ann_->game().currentThrower() == 2);
        ann_->throwAt(ann);
        QVERIFY(ann_->press(QStringLiteral("Confirm Dart")));
        QTRY_COMPARE(bob_->game().phase(), GamePhase::CorkResult);
        // Each copy shows the other's cork where it landed, not mirrored: the
        // client's as CPips(0), the server's as Pips(0).
        QCOMPARE(BoardInput::markerPoint(ann_->control<DartMarker>("CPips_0")), onMarkerGrid(bob, flightMarkerSide));
        QCOMPARE(BoardInput::markerPoint(bob_->control<DartMarker>("Pips_0")), onMarkerGrid(ann, flightMarkerSide));
        QCOMPARE(bob_->gameText(), QStringLiteral("\nAnn's dart: 1.628\"\nBob's dart: 1.628\"\n\nBob goes first.\n(Click \"Ok\")"));
        QCOMPARE(ann_->gameText(), QStringLiteral("\nBob's dart: 1.628\"\nAnn's dart: 1.628\"\n\nBob goes first.\n(Click \"Ok\")"));
        QVERIFY(bob_->press(QStringLiteral("Ok")));
        QCOMPARE(bob_->gameText(), QStringLiteral("\nWaiting for Ann to click \"Ok\"..."));
        QVERIFY(ann_->press(QStringLiteral("Ok")));
        QTRY_COMPARE(bob_->game().phase(), GamePhase::Turn);
    }
    // `thrower` marks a set and confirms it; the other copy reveals it and
    // its user confirms it too.
    void playSet(Copy &thrower, Copy &watcher, const QStringList &codes)
    {
        const QString name = thrower.program->session().currentPlayerName;
        QCOMPARE(watcher.gameText(), QStringLiteral("\nWaiting for ") + name + QStringLiteral(" to throw..."));
        thrower.throwDarts(codes);
        QVERIFY(thrower.press(QStringLiteral("Ok")));
        QTRY_VERIFY(watcher.button()->isEnabled());
        QVERIFY(watcher.press(QStringLiteral("Ok")));
    }
    // After the tied cork: Bob scores 4 in three sets, Ann checks out 141
    // on her third with double 12.
    void annWins()
    {
        // Each of the other side's darts lands with its sound, waited for.
        ann_->sounds.played.clear();
        playSet(*bob_, *ann_, {"S1", "S1", "S1"});
        QCOMPARE(ann_->sounds.played, QStringList(3, QStringLiteral("splat.wav:wait")));
        playSet(*ann_, *bob_, {"T20", "T20", "T20"});
        playSet(*bob_, *ann_, {"S1", "M"});
        playSet(*ann_, *bob_, {"T20", "T20", "T20"});
        playSet(*bob_, *ann_, {"M"});
        playSet(*ann_, *bob_, {"T20", "T19", "D12"});
    }

private slots:
    void cleanup()
    {
        bob_.reset();
        ann_.reset();
    }

    // A whole 501: each copy scores both players' sets, shows the same win
    // and writes its own row; "Play Again" asked by one and granted by the
    // other; a chat line; Bob quits and Ann is told; a new game over the
    // same connection; then Bob closes the connection.
    void wholeGameOverTheNetwork()
    {
        connectBoth();
        // The client starts once on the greeting and again with the server's
        // options, which come in their own message.
        QTRY_COMPARE(bob_->rows(QStringLiteral("select opponent, result from games")).size(), 2);
        QVERIFY(ann_->control<QLabel>("rstatsText")->text().contains(QStringLiteral("vs e-Bob")));
        QCOMPARE(bob_->control<QLabel>("Player1Text")->text(), QStringLiteral("Ann"));
        corkTie();
        annWins();
        QCOMPARE(ann_->control<QLabel>("p1ScoreText")->text(), QStringLiteral("501\n498\n497*"));
        QCOMPARE(bob_->control<QLabel>("p2scoretext")->text(), ann_->control<QLabel>("p1ScoreText")->text());
        QCOMPARE(ann_->gameText(), QStringLiteral("\nAnn won that one.\n\nClick \"Play Again\" to play the same game, or "
                                                  "\"Quit Game\" to change options."));
        QCOMPARE(bob_->gameText(), ann_->gameText());
        QVERIFY(ann_->messages.texts(QStringLiteral("alert")).contains(QStringLiteral("You won!")));
        QVERIFY(bob_->messages.texts(QStringLiteral("alert")).contains(QStringLiteral("Ann won!")));
        QCOMPARE(ann_->rows(QStringLiteral("select opponent, result, throws, points, bestset, outset from games")),
                 (QList<QVariantList>{{QStringLiteral("Bob"), QStringLiteral("W"), 9, 501, 180, 141}}));
        QCOMPARE(bob_->rows(QStringLiteral("select opponent, result, throws, points from games order by id")).last(),
                 (QVariantList{QStringLiteral("Ann"), QStringLiteral("L"), 6, 4}));

        // Play Again: Ann asks and stands by; Bob is asked and consents.
        QVERIFY(ann_->press(QStringLiteral("Play Again")));
        QCOMPARE(ann_->gameText(), QStringLiteral("\n\nStand By..."));
        QTRY_COMPARE(bob_->gameText(), QStringLiteral("\nAnn wants to play again.\n\nClick \"Play Again\" to consent."));
        QVERIFY(bob_->press(QStringLiteral("Play Again")));
        QTRY_COMPARE(ann_->game().phase(), GamePhase::CorkAwaited);
        QCOMPARE(ann_->rows(QStringLiteral("select count(*) from games")).first().first(), 2);

        // A chat line from the menu's window: Enter sends it, though the main
        // window takes Enter for its own button, and the "|" cuts it on the way.
        ann_->control<QAction>("mnuShowChat")->trigger();
        auto *annLine = findControl<QLineEdit>(ann_->net().chat(), "txtMessage");
        annLine->setText(QStringLiteral("Good darts|really"));
        QTest::keyClick(annLine, Qt::Key_Return);
        QTRY_COMPARE(bob_->net().chat()->transcript(), QStringLiteral("Ann: Good darts\r\n"));

        // Bob quits the new game; Ann is told and set up for the next one.
        bob_->control<QPushButton>("btnQuitGame")->click();
        QTRY_COMPARE(ann_->game().phase(), GamePhase::Idle);
        QCOMPARE(ann_->messages.titles().last(), QStringLiteral("Bob quit!"));
        QCOMPARE(ann_->messages.texts(QStringLiteral("notice")).last(),
                 QStringLiteral("\r\nBob quit the game abruptly.\r\n\r\nSet up another game, or use chat to sync up."));

        // Ann sets up Simple Cricket over the standing connection: no new
        // connection, and Bob's copy follows with her options.
        ann_->control<QRadioButton>("opGame_0")->click();
        ann_->control<QRadioButton>("opCricketOptions_0")->click();
        QVERIFY(ann_->startNetworkGame(true, 1));
        QVERIFY(!ann_->net().cancelBox()->isVisible());
        QTRY_COMPARE(bob_->game().options().type, GameType::Cricket);
        QVERIFY(bob_->game().options().simpleCricket && bob_->control<QRadioButton>("opCricketOptions_0")->isChecked());
        QCOMPARE(bob_->game().phase(), GamePhase::CorkAwaited);

        // Bob closes the connection from the menu during the cork: Ann's copy
        // says so, offers only "Quit Game", and then plays on against the
        // computer. (A connection lost during a turn is tested with the
        // misbehaving peer.)
        bob_->control<QAction>("mnuCloseNet")->trigger();
        QTRY_COMPARE(ann_->gameText(), QStringLiteral("Bob disconnected.  Click \"Quit Game\"."));
        QVERIFY(!ann_->button()->isEnabled() && !ann_->control<QLabel>("lblNetworkActive")->isVisible()
                && !ann_->control<QAction>("mnuShowChat")->isEnabled());
        ann_->control<QPushButton>("btnQuitGame")->click();
        ann_->control<QRadioButton>("opOpponent_0")->click();
        QVERIFY(ann_->press(QStringLiteral("Start Game")));
        QCOMPARE(ann_->game().phase(), GamePhase::CorkAwaited);
    }

    // "Close Net Connection" during a game asks first, and No changes
    // nothing; with no game on it closes at once.
    void closingAsksOnlyDuringAGame()
    {
        connectBoth();
        QAction *closeNet = bob_->control<QAction>("mnuCloseNet");
        bob_->messages.answers = {false};
        closeNet->trigger();
        QCOMPARE(bob_->messages.titles().last(), QStringLiteral("Close Net Connection?"));
        QVERIFY(bob_->net().established() && bob_->game().phase() == GamePhase::CorkAwaited);
        QVERIFY(bob_->control<QLabel>("lblNetworkActive")->isVisible() && closeNet->isEnabled());

        bob_->control<QPushButton>("btnQuitGame")->click();
        QCOMPARE(bob_->game().phase(), GamePhase::Idle);
        const qsizetype asked = bob_->messages.shown.size();
        closeNet->trigger();
        QCOMPARE(bob_->messages.shown.size(), asked);
        QVERIFY(!bob_->net().isConnected() && !closeNet->isEnabled());
        QTRY_VERIFY(!ann_->net().established());
    }

    // The nearer dart goes first even when both show the same distance. (An
    // exact tie is played through above.)
    void networkCorkIsDecidedAlike()
    {
        QCOMPARE(shownDistance(10.0001, false), shownDistance(10.0002, false));
        QCOMPARE(networkCorkFirstThrower(10.0001, 10.0002, 2), 1);
        QCOMPARE(networkCorkFirstThrower(10.0002, 10.0001, 1), 2);
    }

    // A peer that is no copy of Tavrix: fields missing or not numbers, a
    // position far off the picture, bytes that are not UTF-8, a megabyte
    // before a terminator, unknown commands: all ignored, and the messages
    // after them still count. An empty set is an empty turn. A stream that
    // never ends a message ends the connection with a message.
    void misbehavingPeerIsSurvived()
    {
        ann_ = std::make_unique<Copy>(QStringLiteral("Ann"));
        const quint16 port = freePort();
        QVERIFY(ann_->startNetworkGame(true, port));
        QTcpSocket peer;
        peer.connectToHost(QHostAddress::LocalHost, port);
        QVERIFY(peer.waitForConnected(5000));
        QByteArray heard;
        connect(&peer, &QTcpSocket::readyRead, this, [&] { heard += peer.readAll(); });
        peer.write("HEL  Mallory \x03");
        QTRY_VERIFY(heard.contains("GAM 501|0|1\x03"));
        QTRY_COMPARE(ann_->gameText(), QStringLiteral("\n\nWaiting for Mallory to throw the cork..."));

        peer.write("BUL|abc|5\x03BUL|1\x03BUL|99999|5\x03\xff\xfe\x80\x03XYZ\x03BYE\x03");
        peer.write(QByteArray(1 << 20, 'x') + "\x03");
        peer.write("BUL|230|30\x03");
        QTRY_COMPARE(ann_->game().currentThrower(), 2);
        QCOMPARE(*ann_->game().corkDart(1), (BoardPoint{0, 200}));
        ann_->throwAt(at("B"));
        QVERIFY(ann_->press(QStringLiteral("Confirm Dart")));
        QTRY_VERIFY(heard.endsWith("BUL|230|230\x03"));
        QVERIFY(ann_->press(QStringLiteral("Ok")));
        QTRY_VERIFY(heard.endsWith("BOK\x03"));
        peer.write("BOK\x03");
        QTRY_COMPARE(ann_->game().phase(), GamePhase::Turn);
        ann_->throwDarts({"T20", "M"});
        QVERIFY(ann_->press(QStringLiteral("Ok")));
        QTRY_VERIFY(heard.endsWith("\x03") && heard.contains("SET|"));
        peer.write("SET\x03REM|hi there|and more\x03REM\x03");
        QTRY_VERIFY(ann_->button()->isEnabled());
        QCOMPARE(ann_->gameText(), QStringLiteral("\nMallory threw:  for 0 points. (dart(s) withheld)\n\n(Click \"Ok\" to continue)"));
        QVERIFY(ann_->press(QStringLiteral("Ok")));
        QCOMPARE(ann_->control<QLabel>("p1ScoreText")->text(), QStringLiteral("501*"));
        QCOMPARE(ann_->net().chat()->transcript(), QStringLiteral("Mallory: hi there\r\n"));

        // A dart sent between whole pixels, on the wire under the treble 20
        // (whose nearest whole pixel is in the treble), is shown, described
        // and scored where it was sent.
        QTRY_COMPARE(ann_->game().currentThrower(), 2);
        ann_->throwDarts({"M"});
        QVERIFY(ann_->press(QStringLiteral("Ok")));
        peer.write("SET|230|116.4\x03");
        QTRY_VERIFY(ann_->button()->isEnabled());
        const BoardPoint sent{0, 260 - (double(116.4f) + 30)};
        QCOMPARE(BoardInput::markerPoint(ann_->control<DartMarker>("CPips_0")), sent);
        QCOMPARE(ann_->gameText(), QStringLiteral("\nMallory threw: Bounce-out for 0 points. (dart(s) withheld)\n\n(Click \"Ok\" to continue)"));
        QVERIFY(ann_->press(QStringLiteral("Ok")));
        QCOMPARE(ann_->control<QLabel>("p1ScoreText")->text(), QStringLiteral("501**"));

        // Five megabytes and no terminator.
        peer.write(QByteArray(5 << 20, 'y'));
        QTRY_COMPARE(ann_->gameText(), QStringLiteral("Mallory disconnected.  Click \"Quit Game\"."));
        QCOMPARE(ann_->messages.texts(QStringLiteral("error")).last(),
                 QStringLiteral("Mallory's copy of Tavrix sent more than 4 MiB without ending a message, "
                                "so Tavrix closed the connection."));
        QTRY_COMPARE(peer.state(), QAbstractSocket::UnconnectedState);
    }
};

QTEST_MAIN(TestNetworkGame)
#include "tst_network_game.moc"
