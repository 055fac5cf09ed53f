// The statistics window driven through the whole program: opened from its
// menu, empty for a player without games, the figures of a game played at
// the board, a new period worked out afresh, the matches' figures, and its
// size on a small screen.

#include "../support/program_test.h"
#include "ui/statistics/statistics_charts.h"
#include "ui/statistics/statistics_dialog.h"
#include "ui/statistics/statistics_service.h"

#include <QChartView>
#include <QCheckBox>
#include <QDateTimeAxis>
#include <QComboBox>
#include <QGroupBox>
#include <QMenuBar>
#include <QProgressBar>

using namespace tavrix;

class TestStatisticsWindow : public ProgramTest {
    Q_OBJECT

    StatisticsDialog *dialog() const { return window()->statisticsDialog(); }
    QString figure(const char *name) const { return findControl<QLabel>(dialog(), name)->text(); }
    QProgressBar *busyBar() const { return findControl<QProgressBar>(dialog(), "barStatisticsBusy"); }
    // Opens the window from its menu entry and waits for its figures.
    void openStatistics()
    {
        action("mnuStatisticsShow")->trigger();
        QVERIFY(dialog() && dialog()->isVisible());
        dialog()->service()->waitForWork();
        QVERIFY(!busyBar()->isVisible());
    }
    void choosePeriod(int index)
    {
        findControl<QComboBox>(dialog(), "cboPeriod")->setCurrentIndex(index);
        // The window goes on while the worker counts.
        QVERIFY(busyBar()->isVisible());
        dialog()->service()->waitForWork();
        QVERIFY(!busyBar()->isVisible());
    }

private slots:
    void cleanup() { program_.reset(); }

    // The menu comes last, Ctrl+T opens it; a player with no games sees
    // 0 games and N/A for every other figure; the window fits a 800 x 600
    // screen with its title bar.
    void opensEmptyFromTheMenuAndFitsASmallScreen()
    {
        startProgram();
        const QList<QAction *> menus = window()->menuBar()->actions();
        QCOMPARE(menus.last()->menu()->objectName(), QStringLiteral("mnuStatistics"));
        QCOMPARE(menus.last()->text(), QStringLiteral("Statistics"));
        QCOMPARE(action("mnuStatisticsShow")->text(), QStringLiteral("Show Statistics..."));
        key(Qt::Key_T, Qt::ControlModifier);
        QTRY_VERIFY(dialog() && dialog()->isVisible());
        QCOMPARE(dialog()->objectName(), QStringLiteral("StatisticsDialog"));
        dialog()->service()->waitForWork();

        QCOMPARE(figure("statGames"), QStringLiteral("0"));
        QCOMPARE(figure("statWon"), QStringLiteral("0"));
        for (const char *name : {"statAverage", "statFirst9", "statCheckout", "statTons", "stat140", "stat180",
                                 "statBestLeg", "statHighOut", "statMarksPerRound"})
            QCOMPARE(figure(name), QStringLiteral("N/A"));
        QVERIFY(findControl<QLabel>(dialog(), "lblStatisticsNote")->isHidden());
        QVERIFY(findControl<QGroupBox>(dialog(), "grpMatches")->isHidden());
        auto *period = findControl<QComboBox>(dialog(), "cboPeriod");
        QStringList periods;
        for (int i = 0; i < period->count(); ++i)
            periods << period->itemText(i);
        QCOMPARE(periods, (QStringList{"All time", "Last 365 days", "Last 30 days", "Last 7 days"}));
        QCOMPARE(dialog()->charts()->doubleTip(15), QStringLiteral("D16: no darts aimed at it"));

        const QSize least = dialog()->minimumSizeHint().expandedTo(dialog()->minimumSize());
        QVERIFY2(least.width() <= 800 && least.height() <= 568,
                 qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
        dialog()->resize(800, 568);
        QCOMPARE(dialog()->size(), QSize(800, 568));
    }

    // 501 at the board against Bob: Ann's 180, 180 and 141 out (T20 T19 D12)
    // in nine darts, one of them at a one-dart finish (24), with the window
    // open all along: it takes in the game when it is over. The game moved
    // a year back leaves the last 7 days empty.
    void figuresOfAPlayedGameAndAPeriodChange()
    {
        startProgram();
        control<QRadioButton>("opGame_2")->click();
        control<QCheckBox>("chkDoubleIn")->setChecked(false);
        control<QCheckBox>("chkDoubleOut")->setChecked(true);
        control<QCheckBox>("chkKeep01stats")->setChecked(true);
        startAgainst(QStringLiteral("Bob"));
        openStatistics();
        QCOMPARE(figure("statGames"), QStringLiteral("0"));
        corkAnnFirst();
        playSet({"T20", "T20", "T20"});
        playSet({"S1", "S1", "S1"});
        playSet({"T20", "T20", "T20"});
        playSet({"S1", "S1", "S1"});
        playSet({"T20", "T19", "D12"});
        QCOMPARE(startButton()->text(), QStringLiteral("Play Again"));
        QTRY_COMPARE_WITH_TIMEOUT(figure("statGames"), QStringLiteral("1"), 10000);
        dialog()->service()->waitForWork();
        const std::pair<const char *, const char *> expected[] = {
            {"statGames", "1"},        {"statWon", "1"},      {"statAverage", "167.00"}, {"statFirst9", "167.00"},
            {"statCheckout", "100.0%"}, {"statTons", "0"},     {"stat140", "1"},          {"stat180", "2"},
            {"statBestLeg", "9"},      {"statHighOut", "141"}, {"statMarksPerRound", "N/A"}};
        for (const auto &[name, text] : expected)
            QCOMPARE(figure(name), QString::fromLatin1(text));
        // The cork (in the bull) is the one dart aimed at it; D12 was aimed at
        // the target, the treble 20.
        QCOMPARE(dialog()->charts()->doubleTip(20), QStringLiteral("Bull: 1 of 1 darts hit (100.0%)"));
        // One game: the time axis spans a day, and its five labels differ.
        const auto *time = qobject_cast<QDateTimeAxis *>(
            dialog()->findChildren<QChartView *>().first()->chart()->axes(Qt::Horizontal).first());
        QVERIFY(time);
        QSet<QString> labels;
        const qint64 from = time->min().toMSecsSinceEpoch(), span = time->max().toMSecsSinceEpoch() - from;
        for (int tick = 0; tick < time->tickCount(); ++tick)
            labels << QDateTime::fromMSecsSinceEpoch(from + span * tick / (time->tickCount() - 1)).toString(time->format());
        QCOMPARE(labels.size(), time->tickCount());

        sqlRows(program_->store().connection(),
                QStringLiteral("UPDATE games SET creationdate = datetime('now', 'localtime', '-300 days')"));
        choosePeriod(3);
        QCOMPARE(figure("statGames"), QStringLiteral("0"));
        QCOMPARE(figure("statAverage"), QStringLiteral("N/A"));
        choosePeriod(1);
        QCOMPARE(figure("statGames"), QStringLiteral("1"));
        QCOMPARE(figure("statAverage"), QStringLiteral("167.00"));
    }

    // A player with matches sees their block: a 501 match won and a Cricket
    // one lost, one abandoned; the average is the 501 match's (600 points
    // in 30 darts, the opponent 450 in 27). The window still fits a small
    // screen.
    void matchFiguresShowOnceThereAreMatches()
    {
        startProgram();
        StatsStore &store = program_->store();
        const qint64 ann = *store.playerIdByName(QStringLiteral("Ann"));
        const std::pair<GameType, MatchEnd> ended[] = {
            {GameType::X01_501, {"W", 3, 1, 0, 0, 600, 30, 450, 27}},
            {GameType::Cricket, {"L", 0, 2, 0, 0, 30, 24, 45, 24}},
            {GameType::X01_501, {"A", 1, 0, 0, 0, 300, 12, 200, 12}}};
        for (const auto &[type, end] : ended)
            QVERIFY(store.finishMatch(*store.insertMatch({ann, type, SkillLevel::You, "Bob", 1, 1, 3}), end));
        openStatistics();
        QVERIFY(findControl<QGroupBox>(dialog(), "grpMatches")->isVisible());
        const std::pair<const char *, const char *> expected[] = {{"lblMatchesPlayed", "2"},
                                                                  {"lblMatchesWon", "1 / 1"},
                                                                  {"lblMatchesAbandoned", "1"},
                                                                  {"lblMatchAverage", "60.00"},
                                                                  {"lblMatchOpponentAverage", "50.00"}};
        for (const auto &[name, text] : expected)
            QCOMPARE(figure(name), QString::fromLatin1(text));
        const QSize least = dialog()->minimumSizeHint().expandedTo(dialog()->minimumSize());
        QVERIFY2(least.width() <= 800 && least.height() <= 568,
                 qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
    }
};

QTEST_MAIN(TestStatisticsWindow)
#include "tst_statistics_window.moc"
