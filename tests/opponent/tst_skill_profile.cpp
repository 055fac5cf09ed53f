// The "You" skill profile cut from the player's recorded distances (the fixed
// levels are thrown in tst_throw_model). Wild darts and the widest band's cut at three
// times the average are checked through the review frame (tst_main_window).

#include "core/opponent/skill_profile.h"
#include "core/stats/stats_store.h"

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

    // The quarters and the counts, kept between reads, follow a change made
    // through another connection. (A change through this one is seen in
    // youProfileNeedsTwoHundredDistinctDistances.)
    void keptQuartersFollowAnotherConnection()
    {
        for (int d = 1; d <= 250; ++d)
            practiceDart(d);
        QVERIFY(store_->distanceQuarters(player_, youMinSamples) && store_->targetCounts(player_));
        StatsStore other(QStringLiteral("other"));
        QVERIFY(other.open(dir_->filePath(QStringLiteral("t.db"))));
        QVERIFY(other.insertStatThrow({player_, target_, 0, 0, 0, 950, 0, 0}));
        QCOMPARE(store_->distanceQuarters(player_, youMinSamples)->widestMax, 950.0);
        QCOMPARE((*store_->targetCounts(player_))[0][1], 251);
    }

    // Practice and game darts are counted under the area they were aimed
    // at: the bull first, then 20 down to 1.
    void dartsAreCountedPerTarget()
    {
        const qint64 bull = *store_->insertStatTarget(player_, 25, 1);
        const qint64 treble1 = *store_->insertStatTarget(player_, 1, 3);
        practiceDart(1, bull);
        practiceDart(3, treble1);
        gameDart(5, 25, 1);
        gameDart(6, 20, 3);
        gameDart(7, 20, 3);

        const std::optional<TargetCounts> counts = store_->targetCounts(player_);
        QVERIFY(counts);
        QCOMPARE((QList<qint64>{(*counts)[0][0], (*counts)[2][20], (*counts)[2][1]}), (QList<qint64>{2, 1, 2}));
    }
};

QTEST_GUILESS_MAIN(TestSkillProfile)
#include "tst_skill_profile.moc"
