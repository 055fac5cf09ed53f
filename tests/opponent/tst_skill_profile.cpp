// The "You" skill profile cut from the player's recorded distances (the fixed
// levels are thrown in tst_throw_model). Wild darts and the widest band's cut at three
// times the average are checked through the review frame (tst_main_window).

#include "opponent/skill_profile.h"

#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

class TestSkillProfile : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<StatsStore> store_;
    qint64 player_ = 0;
    qint64 game_ = 0;
    qint64 target_ = 0;

    void gameDart(double dist, int targetScore = 20, int targetRing = 3, qint64 player = 0)
    {
        const qint64 who = player ? player : player_;
        QVERIFY(store_->insertGameDart({game_, who, 1, 0, 0, 0, dist, 0, 0, targetScore, targetRing}));
    }
    void practiceDart(double dist, qint64 target = 0)
    {
        QVERIFY(store_->insertStatThrow({player_, target ? target : target_, 0, 0, 0, dist, 0, 0}));
    }

private slots:
    void init()
    {
        dir_ = std::make_unique<QTemporaryDir>();
        store_ = std::make_unique<StatsStore>();
        QVERIFY(store_->open(dir_->filePath(QStringLiteral("t.db"))));
        player_ = *store_->insertPlayer(QStringLiteral("Ann"));
        game_ = *store_->insertGame({player_, GameType::X01_501, SkillLevel::BPlayer, QStringLiteral("Computer")});
        target_ = *store_->insertStatTarget(player_, 20, 1);
    }
    void cleanup() { store_.reset(); }

    // Equal distances count once, across both tables; the 200th distinct
    // distance makes the level available and cuts the bands in quarters.
    void youProfileNeedsTwoHundredDistinctDistances()
    {
        for (int d = 1; d <= 150; ++d)
            gameDart(d);
        for (int d = 100; d <= 199; ++d) // 100..150 repeat the game darts
            practiceDart(d);
        gameDart(199);

        SkillProfileState state;
        state.profile = fixedSkillProfile(SkillLevel::Master);
        QVERIFY(buildSkillProfile(state, SkillLevel::You, 0, *store_, player_));
        QCOMPARE(state.youSampleCount, 199);
        QVERIFY(!state.youLevelAvailable());
        // Too few samples: the profile held before is kept.
        QCOMPARE(state.profile.wildness, 0.005);

        practiceDart(200);
        QVERIFY(buildSkillProfile(state, SkillLevel::You, 0, *store_, player_));
        QCOMPARE(state.youSampleCount, 200);
        QVERIFY(state.youLevelAvailable());
        QCOMPARE(state.profile.skillRadii,
                 (std::array<DistanceBand, 4>{{{0, 50}, {51, 100}, {101, 150}, {151, 200}}}));
        QCOMPARE(state.profile.wildness, 0.0);

        // Another player's darts change nothing.
        const qint64 other = *store_->insertPlayer(QStringLiteral("Bob"));
        gameDart(5000, 20, 3, other);
        QVERIFY(buildSkillProfile(state, SkillLevel::You, 0, *store_, player_));
        QCOMPARE(state.youSampleCount, 200);
    }

    // The quarters as the profile cuts them, from distances in any order:
    // the count, the average, the eight bounds and the wild count. An empty
    // distance sorts first and takes a place among the closest; repeats count
    // once; quarters that hold nothing read 0; with fewer darts than asked
    // for only the count is read.
    void quartersOfDistances()
    {
        const struct {
            QList<double> distances;
            bool hasNull;
            QList<double> expected;
        } cases[] = {{{5, 1, 4, 2, 3}, false, {5, 3, 2, 3, 3, 3, 3, 4, 5, 0}},
                     {{5, 1, 4, 2, 3}, true, {5, 3, 1, 2, 2, 3, 3, 4, 5, 0}},
                     {{1, 2, 1}, false, {2, 1.5, 1, 0, 0, 0, 0, 2, 2, 0}},
                     {{1, 2, 3, 4, 5, 6, 7, 100}, false, {8, 16, 2, 3, 4, 5, 6, 7, 100, 1}}};
        for (const auto &c : cases) {
            const DistanceQuarters q = distanceQuartersOf({{c.distances.begin(), c.distances.end()}, c.hasNull}, 1);
            QCOMPARE((QList<double>{double(q.sampleCount), q.average, q.tightestMax, q.secondMin, q.secondMax,
                                    q.thirdMin, q.thirdMax, q.widestMin, q.widestMax, double(q.wildCount)}),
                     c.expected);
            const DistanceQuarters few = distanceQuartersOf({{c.distances.begin(), c.distances.end()}, c.hasNull}, 100);
            QCOMPARE(few.sampleCount, q.sampleCount);
            QCOMPARE(few.widestMax, 0.0);
        }
    }

    // The quarters are read once and kept until the database changes,
    // through this connection or another one; what is kept is what a fresh
    // read gives.
    void quartersAreKeptUntilTheDartsChange()
    {
        for (int d = 1; d <= 250; ++d)
            practiceDart(d);
        const DistanceQuarters first = *store_->distanceQuarters(player_, youMinSamples);
        const int reads = store_->playerReads();
        QCOMPARE(store_->distanceQuarters(player_, youMinSamples)->widestMax, first.widestMax);
        QVERIFY(store_->targetCounts(player_));
        QVERIFY(store_->targetCounts(player_));
        QCOMPARE(store_->playerReads(), reads + 1);

        practiceDart(900);
        QCOMPARE(store_->distanceQuarters(player_, youMinSamples)->widestMax, 900.0);
        {
            StatsStore other(QStringLiteral("other"));
            QVERIFY(other.open(dir_->filePath(QStringLiteral("t.db"))));
            QVERIFY(other.insertStatThrow({player_, target_, 0, 0, 0, 950, 0, 0}));
            const DistanceQuarters fresh = *other.distanceQuarters(player_, youMinSamples);
            const DistanceQuarters kept = *store_->distanceQuarters(player_, youMinSamples);
            QCOMPARE(kept.widestMax, 950.0);
            QCOMPARE((QList<double>{kept.average, kept.tightestMax, kept.secondMax, kept.thirdMin, kept.widestMin}),
                     (QList<double>{fresh.average, fresh.tightestMax, fresh.secondMax, fresh.thirdMin, fresh.widestMin}));
            QCOMPARE((*store_->targetCounts(player_))[0][1], 252);
        }
        QCOMPARE(store_->playerReads(), reads + 4);
    }

    // Practice and game darts are counted under the area they were aimed
    // at: the bull first, then 20 down to 1.
    void dartsAreCountedPerTarget()
    {
        const qint64 bull = *store_->insertStatTarget(player_, 25, 1);
        const qint64 treble1 = *store_->insertStatTarget(player_, 1, 3);
        practiceDart(1, bull);
        practiceDart(2, bull);
        practiceDart(3, treble1);
        practiceDart(4); // any 20
        gameDart(5, 25, 1);
        gameDart(6, 20, 3);
        gameDart(7, 20, 3);

        const std::optional<TargetCounts> counts = store_->targetCounts(player_);
        QVERIFY(counts);
        QCOMPARE((QList<qint64>{(*counts)[0][0], (*counts)[2][20], (*counts)[0][1], (*counts)[2][1]}),
                 (QList<qint64>{3, 1, 1, 2}));
        qint64 total = 0;
        for (const auto &ring : *counts)
            for (qint64 n : ring)
                total += n;
        QCOMPARE(total, 7);
    }
};

QTEST_GUILESS_MAIN(TestSkillProfile)
#include "tst_skill_profile.moc"
