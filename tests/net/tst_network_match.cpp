// Matches over the network: two copies playing "first to 2 legs" with the
// same score on both, the legs after the first without a cork and with the
// same first thrower; a copy that ignores the match message, so both play a
// single game; and a client that takes the format only before its cork.

#include "../support/network_play.h"
#include "../support/scripted_peer.h"
#include "core/games/match_play.h"
#include "core/net/net_game_rules.h"

#include <QComboBox>
#include <QSpinBox>
#include <QTcpServer>

using namespace tavrix;

namespace {

const QStringList nine[] = {{"T20", "T20", "T20"}, {"T20", "T20", "T20"}, {"T20", "T19", "D12"}};

void chooseMatch(NetworkCopy &copy, int choice, int legs)
{
    copy.control<QComboBox>("cboMatchFormat")->setCurrentIndex(choice);
    copy.control<QSpinBox>("spnLegs")->setValue(legs);
}

QString label(const NetworkCopy &copy, const char *name) { return copy.control<QLabel>(name)->text(); }

QString lastAlert(const NetworkCopy &copy)
{
    for (qsizetype i = copy.messages.shown.size() - 1; i >= 0; --i) {
        if (copy.messages.shown[i].kind == QLatin1String("alert"))
            return copy.messages.shown[i].title + QLatin1Char('|') + copy.messages.shown[i].text;
    }
    return {};
}

const std::optional<Match> &matchOf(const NetworkCopy &copy) { return copy.window()->playController()->match(); }

} // namespace

class TestNetworkMatch : public QObject {
    Q_OBJECT

    std::unique_ptr<NetworkCopy> ann_; // the server
    std::unique_ptr<NetworkCopy> bob_; // the client

    void playSet(NetworkCopy &thrower, NetworkCopy &watcher, const QStringList &codes)
    {
        thrower.throwDarts(codes);
        QVERIFY(thrower.press(QStringLiteral("Ok")));
        QTRY_VERIFY(watcher.button()->isEnabled());
        QVERIFY(watcher.press(QStringLiteral("Ok")));
    }
    // `winner` throws nine darts to 501, the other misses.
    void leg(NetworkCopy &winner, NetworkCopy &loser, bool winnerFirst)
    {
        if (!winnerFirst)
            playSet(loser, winner, {"M", "M", "M"});
        for (int i = 0; i < 3 && !QTest::currentTestFailed(); ++i) {
            playSet(winner, loser, nine[i]);
            if (i < 2)
                playSet(loser, winner, {"M", "M", "M"});
        }
    }
    // Ann asks for the next leg and stands by; Bob consents; both play on.
    void nextLeg()
    {
        QVERIFY(ann_->press(QStringLiteral("Next Leg")));
        QCOMPARE(ann_->gameText(), QStringLiteral("\n\nStand By..."));
        QTRY_COMPARE(bob_->gameText(), nextLegConsentText(QStringLiteral("Ann")));
        QVERIFY(bob_->press(QStringLiteral("Next Leg")));
        QTRY_COMPARE(ann_->game().phase(), GamePhase::Turn);
        QCOMPARE(bob_->game().phase(), GamePhase::Turn);
    }
    // The same score and the same first thrower on both copies, each
    // showing its own left player first.
    void expectSameScore(int annLegs, int bobLegs, const QString &starter)
    {
        QCOMPARE(label(*ann_, "lblMatchScore"), QStringLiteral("Legs %1\u2013%2").arg(bobLegs).arg(annLegs));
        QCOMPARE(label(*bob_, "lblMatchScore"), QStringLiteral("Legs %1\u2013%2").arg(annLegs).arg(bobLegs));
        QCOMPARE(label(*ann_, "lblLegStarter"), starter);
        QCOMPARE(label(*bob_, "lblLegStarter"), starter);
    }

private slots:
    void cleanup()
    {
        bob_.reset();
        ann_.reset();
    }

    void firstToTwoLegsOnTwoCopies()
    {
        ann_ = std::make_unique<NetworkCopy>(QStringLiteral("Ann"));
        bob_ = std::make_unique<NetworkCopy>(QStringLiteral("Bob"));
        chooseMatch(*ann_, 1, 2);
        const quint16 port = freePort();
        QVERIFY(ann_->startNetworkGame(true, port));
        QVERIFY(bob_->startNetworkGame(false, port));
        // Bob's copy takes Ann's format and shows it on its set-up.
        QTRY_COMPARE(label(*ann_, "lblMatchScore"), QStringLiteral("First to 2 legs"));
        QCOMPARE(label(*bob_, "lblMatchScore"), QStringLiteral("First to 2 legs"));
        QCOMPARE(bob_->control<QComboBox>("cboMatchFormat")->currentIndex(), 1);
        QCOMPARE(bob_->control<QSpinBox>("spnLegs")->value(), 2);

        // Bob's cork far out, Ann's in the bull: Ann throws first.
        bob_->throwDarts({"S3"});
        QVERIFY(bob_->press(QStringLiteral("Confirm Dart")));
        QTRY_VERIFY(ann_->game().phase() == GamePhase::CorkAwaited && ann_->game().currentThrower() == 2);
        ann_->throwDarts({"B"});
        QVERIFY(ann_->press(QStringLiteral("Confirm Dart")));
        QTRY_COMPARE(bob_->game().phase(), GamePhase::CorkResult);
        QVERIFY(bob_->press(QStringLiteral("Ok")));
        QVERIFY(ann_->press(QStringLiteral("Ok")));
        QTRY_COMPARE(bob_->game().phase(), GamePhase::Turn);
        expectSameScore(0, 0, QStringLiteral("Leg 1: Ann threw first"));

        leg(*ann_, *bob_, true);
        QCOMPARE(lastAlert(*ann_), QStringLiteral("Leg Over|You won the leg!\r\n\r\nLegs: Bob 0, Ann 1"));
        QCOMPARE(lastAlert(*bob_), QStringLiteral("Leg Over|Ann won the leg!\r\n\r\nLegs: Ann 1, Bob 0"));
        expectSameScore(1, 0, QStringLiteral("Next, leg 2: Bob throws first"));

        // No cork: Bob throws first in leg 2 on both copies.
        nextLeg();
        QCOMPARE(ann_->game().currentThrower(), 1);
        QCOMPARE(bob_->game().currentThrower(), 2);
        expectSameScore(1, 0, QStringLiteral("Leg 2: Bob threw first"));
        leg(*bob_, *ann_, true);
        expectSameScore(1, 1, QStringLiteral("Next, leg 3: Ann throws first"));

        nextLeg();
        QCOMPARE(ann_->game().currentThrower(), 2);
        leg(*ann_, *bob_, true);
        QVERIFY(lastAlert(*ann_).startsWith(QStringLiteral("Good Game!|You won the match by 2 legs to 1!")));
        QVERIFY(lastAlert(*bob_).startsWith(QStringLiteral("Good Game!|Ann won the match by 2 legs to 1!")));
        QCOMPARE(matchOf(*ann_)->average(1), matchOf(*bob_)->average(0));
        QCOMPARE(matchOf(*ann_)->average(0), matchOf(*bob_)->average(1));
        const QString legsWon = QStringLiteral("select result, playerlegs, opponentlegs from matches");
        QCOMPARE(ann_->rows(legsWon), (QList<QVariantList>{{"W", 2, 1}}));
        QCOMPARE(bob_->rows(legsWon), (QList<QVariantList>{{"L", 1, 2}}));
        QCOMPARE(ann_->rows(QStringLiteral("select firstthrower from matchlegs order by legno")),
                 (QList<QVariantList>{{2}, {1}, {2}}));
        QCOMPARE(bob_->rows(QStringLiteral("select firstthrower from matchlegs order by legno")),
                 (QList<QVariantList>{{1}, {2}, {1}}));

        // A new match with a cork on both once both asked to play again; then
        // Bob leaves in its middle and Ann's match ends as abandoned.
        QVERIFY(ann_->press(QStringLiteral("Play Again")));
        QTRY_COMPARE(bob_->gameText(), playAgainConsentText(QStringLiteral("Ann")));
        QVERIFY(bob_->press(QStringLiteral("Play Again")));
        QTRY_COMPARE(ann_->game().phase(), GamePhase::CorkAwaited);
        QCOMPARE(label(*ann_, "lblMatchScore"), QStringLiteral("First to 2 legs"));
        bob_->throwDarts({"S3"});
        QVERIFY(bob_->press(QStringLiteral("Confirm Dart")));
        QTRY_VERIFY(ann_->game().currentThrower() == 2);
        ann_->throwDarts({"B"});
        QVERIFY(ann_->press(QStringLiteral("Confirm Dart")));
        QTRY_COMPARE(ann_->rows(QStringLiteral("select count(*) from matches")).first().first(), 2);
        bob_->control<QAction>("mnuCloseNet")->trigger();
        QTRY_COMPARE(ann_->gameText(), disconnectedText(QStringLiteral("Bob")));
        QCOMPARE(ann_->rows(QStringLiteral("select result from matches order by id")),
                 (QList<QVariantList>{{"W"}, {"A"}}));
    }

    // Mallory's program knows no matches: it ignores MAT and throws its cork
    // without answering. Ann's copy plays a single game, says so once, and
    // proposes no match to that copy again.
    void aCopyWithoutMatchesPlaysASingleGame()
    {
        ann_ = std::make_unique<NetworkCopy>(QStringLiteral("Ann"));
        chooseMatch(*ann_, 1, 3);
        const quint16 port = freePort();
        QVERIFY(ann_->startNetworkGame(true, port));
        ScriptedPeer mallory;
        QVERIFY(mallory.connectTo(port));
        mallory.say("HEL Mallory\x03");
        QTRY_VERIFY(mallory.heard.contains("GAM 501|0|1\x03MAT|1|3\x03"));
        const PicturePos far = markerPosOf(at(QStringLiteral("S3")));
        mallory.say("BUL|" + coordinateText(far.left) + "|" + coordinateText(far.top) + "\x03");
        QTRY_VERIFY(ann_->game().phase() == GamePhase::CorkAwaited && ann_->game().currentThrower() == 2);
        ann_->throwDarts({"B"});
        QVERIFY(ann_->press(QStringLiteral("Confirm Dart")));
        QTRY_COMPARE(ann_->game().phase(), GamePhase::CorkResult);
        QCOMPARE(ann_->messages.texts(QStringLiteral("notice")),
                 QStringList{QStringLiteral("The other copy plays single games only.")});
        QVERIFY(!ann_->control<QLabel>("lblMatchScore")->isVisible());
        mallory.say("BOK\x03");
        QVERIFY(ann_->press(QStringLiteral("Ok")));
        QTRY_COMPARE(ann_->game().phase(), GamePhase::Turn);
        QCOMPARE(ann_->game().currentThrower(), 2);
        for (int i = 0; i < 3; ++i) {
            ann_->throwDarts(nine[i]);
            QVERIFY(ann_->press(QStringLiteral("Ok")));
            if (i == 2)
                break;
            mallory.say(setOf({"M", "M", "M"}));
            QTRY_VERIFY(ann_->button()->isEnabled());
            QVERIFY(ann_->press(QStringLiteral("Ok")));
        }
        QCOMPARE(lastAlert(*ann_), QStringLiteral("Good Game!|You won!"));
        QCOMPARE(ann_->button()->text(), QStringLiteral("Play Again"));
        QCOMPARE(ann_->rows(QStringLiteral("select count(*) from matches")).first().first(), 0);

        // A new game over the same connection: no MAT, and no second notice.
        ann_->control<QPushButton>("btnQuitGame")->click();
        mallory.heard.clear();
        QVERIFY(ann_->startNetworkGame(true, 1));
        QTRY_VERIFY(mallory.heard.contains("GAM 501|0|1\x03"));
        QTest::qWait(50);
        QVERIFY(!mallory.heard.contains("MAT|"));
        QCOMPARE(ann_->messages.texts(QStringLiteral("notice")).size(), 1);
    }

    // Bob's copy as the client of a scripted server: a format proposed
    // after its cork dart went out comes too late and is not answered; one
    // proposed with the next game, before the cork, is taken and answered.
    void clientTakesTheFormatOnlyBeforeItsCork()
    {
        bob_ = std::make_unique<NetworkCopy>(QStringLiteral("Bob"));
        QTcpServer listener;
        QVERIFY(listener.listen(QHostAddress::LocalHost));
        QVERIFY(bob_->startNetworkGame(false, listener.serverPort()));
        QTRY_VERIFY(listener.hasPendingConnections());
        ScriptedPeer server(listener.nextPendingConnection());
        server.say("HEL Srv\x03GAM 501|0|1\x03");
        // Started on the greeting, then again with the server's game.
        QTRY_COMPARE(bob_->rows(QStringLiteral("select count(*) from games")).first().first(), 2);
        bob_->throwDarts({"S3"});
        QVERIFY(bob_->press(QStringLiteral("Confirm Dart")));
        QTRY_VERIFY(server.heard.contains("BUL|"));
        server.say("MAT|1|5\x03");
        QTest::qWait(50);
        QVERIFY(!server.heard.contains("MOK"));
        QVERIFY(!bob_->control<QLabel>("lblMatchScore")->isVisible());

        bob_->control<QPushButton>("btnQuitGame")->click();
        QTRY_VERIFY(server.heard.contains("QUI"));
        server.say("GAM 501|0|1\x03MAT|2|3\x03");
        QTRY_VERIFY(server.heard.contains("MOK\x03"));
        QCOMPARE(label(*bob_, "lblMatchScore"), QStringLiteral("First to 2 sets of 3 legs"));
        QCOMPARE(bob_->control<QComboBox>("cboMatchFormat")->currentIndex(), 2);
        QCOMPARE(bob_->control<QSpinBox>("spnSets")->value(), 2);
        QCOMPARE(bob_->control<QSpinBox>("spnLegs")->value(), 3);
    }
};

QTEST_MAIN(TestNetworkMatch)
#include "tst_network_match.moc"
