// The statistics window's "Club" page: absent on a file, on a server a
// table of every player's figures, sorted by a header click with empty
// cells last, and a check box that takes the current player off it.

#include "../support/test_server.h"
#include "ui/statistics/club_page.h"
#include "ui/statistics/statistics_charts.h"
#include "ui/statistics/statistics_dialog.h"
#include "ui/statistics/statistics_service.h"

#include "core/stats/stats_store.h"

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

namespace {

void playGame(StatsStore &store, qint64 player, int points, int throws)
{
    const qint64 game = store.insertGame({player, GameType::X01_501, SkillLevel::Master, QStringLiteral("CPU")})
                            .value_or(-1);
    QVERIFY(store.finishGame(game, {QStringLiteral("L"), throws, points, 0, 0}));
}

QStringList column(const QTableWidget *table, int index)
{
    QStringList texts;
    for (int row = 0; row < table->rowCount(); ++row)
        texts << table->item(row, index)->text();
    return texts;
}

void clickHeader(QTableWidget *table, int index)
{
    QHeaderView *header = table->horizontalHeader();
    const QPoint at(header->sectionViewportPosition(index) + header->sectionSize(index) / 2, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, at);
}

} // namespace

class TestClubPage : public QObject {
    Q_OBJECT

private slots:
    // On a file the window keeps its chart tabs only; when the statistics
    // move to a server and back, the page comes and goes with them.
    void theClubPageIsThereOnAServerOnly()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("t.db"));
        StatsStore store;
        QVERIFY(store.open(file));
        const qint64 ann = store.insertPlayer(QStringLiteral("Ann")).value_or(-1);
        StatisticsDialog dialog(store);
        dialog.showFor(ann, QStringLiteral("Ann"));
        dialog.service()->waitForWork();
        QVERIFY(!dialog.clubPage());
        QVERIFY(!dialog.findChild<QWidget *>(QStringLiteral("tabClub")));
        QVERIFY(!dialog.findChild<QCheckBox *>(QStringLiteral("chkClubHideMe")));
        QCOMPARE(dialog.charts()->count(), 4);

        QString error;
        const std::optional<ServerAddress> server = TestServer::freshDatabase(QStringLiteral("clubmove"), error);
        QVERIFY2(server, qPrintable(error));
        QVERIFY(store.open(StoreAddress(*server), {}));
        dialog.showFor(store.insertPlayer(QStringLiteral("Ann")).value_or(-1), QStringLiteral("Ann"));
        dialog.service()->waitForWork();
        QVERIFY(dialog.findChild<QWidget *>(QStringLiteral("tabClub")));
        QCOMPARE(dialog.charts()->count(), 5);
        QCOMPARE(dialog.findChild<QTableWidget *>(QStringLiteral("tblClub"))->rowCount(), 1);

        QVERIFY(store.open(file));
        dialog.showFor(ann, QStringLiteral("Ann"));
        dialog.service()->waitForWork();
        QVERIFY(!dialog.findChild<QWidget *>(QStringLiteral("tabClub")));
        QCOMPARE(dialog.charts()->count(), 4);
    }

    // Three players on a server, one without games: the page lists them
    // all, the current player in bold; the averages sort as numbers both
    // ways with the empty cell last; hiding takes the player off the page
    // and off the server's list, showing again brings the player back.
    void aServerListsSortsAndHides()
    {
        QString error;
        const std::optional<ServerAddress> server = TestServer::freshDatabase(QStringLiteral("clubpage"), error);
        QVERIFY2(server, qPrintable(error));
        StatsStore store;
        QVERIFY2(store.open(StoreAddress(*server), {}), qPrintable(store.lastError()));
        const qint64 ann = store.insertPlayer(QStringLiteral("Ann")).value_or(-1);
        const qint64 bob = store.insertPlayer(QStringLiteral("Bob")).value_or(-1);
        store.insertPlayer(QStringLiteral("Cy"));
        playGame(store, ann, 270, 9);  // 90.00
        playGame(store, bob, 90, 3);   // 90.00
        playGame(store, bob, 501, 15); // with the game before: 98.50

        StatisticsDialog dialog(store);
        dialog.showFor(ann, QStringLiteral("Ann"));
        dialog.service()->waitForWork();
        auto *page = dialog.findChild<QWidget *>(QStringLiteral("tabClub"));
        QVERIFY(page);
        QCOMPARE(dialog.charts()->tabText(dialog.charts()->indexOf(page)), QStringLiteral("Club"));
        dialog.charts()->setCurrentWidget(page);
        auto *table = dialog.findChild<QTableWidget *>(QStringLiteral("tblClub"));
        QVERIFY(table);
        QCOMPARE(table->rowCount(), 3);
        // Best average first when it opens.
        QCOMPARE(column(table, 0), (QStringList{"Bob", "Ann", "Cy"}));
        QCOMPARE(column(table, 2), (QStringList{"98.50", "90.00", ""}));
        QVERIFY(table->item(1, 0)->font().bold());
        QVERIFY(!table->item(0, 0)->font().bold());

        clickHeader(table, 2);
        QCOMPARE(column(table, 0), (QStringList{"Ann", "Bob", "Cy"}));
        // "0" has a number: it sorts, unlike an empty cell.
        clickHeader(table, 1);
        const bool up = table->horizontalHeader()->sortIndicatorOrder() == Qt::AscendingOrder;
        const QStringList rising{"0", "1", "2"};
        const QStringList falling{"2", "1", "0"};
        QCOMPARE(column(table, 1), up ? rising : falling);
        clickHeader(table, 1);
        QCOMPARE(column(table, 1), up ? falling : rising);

        auto *hideMe = dialog.findChild<QCheckBox *>(QStringLiteral("chkClubHideMe"));
        QVERIFY(hideMe && !hideMe->isChecked());
        QCOMPARE(hideMe->text(), QStringLiteral("Hide my figures from the club page"));
        hideMe->click();
        dialog.service()->waitForWork();
        QCOMPARE(store.isHiddenFromClub(ann), std::optional<bool>(true));
        QVERIFY(!column(table, 0).contains(QStringLiteral("Ann")));
        QCOMPARE(table->rowCount(), 2);

        hideMe->click();
        dialog.service()->waitForWork();
        QCOMPARE(table->rowCount(), 3);
    }
};

QTEST_MAIN(TestClubPage)
#include "tst_club_page.moc"
