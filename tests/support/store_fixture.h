#pragma once

// The store under test on a file of its own in a new folder for each test
// function, and that file read through another connection, as another
// program would read it.

#include "sql_rows.h"

#include "core/stats/stats_store.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

class StoreFixture {
protected:
    std::unique_ptr<QTemporaryDir> dir_;
    QString path_;
    tavrix::StatsStore store_;

    // For init(): the new folder, and the store's file opened there.
    void openNewStore()
    {
        dir_ = std::make_unique<QTemporaryDir>();
        path_ = dir_->filePath(QStringLiteral("tavrix.db"));
        QVERIFY2(store_.open(path_), qPrintable(store_.lastError()));
    }
    QList<QVariantList> read(const QString &sql) const { return OtherConnection(path_).rows(sql); }

    // A file `name` in the folder, of this version, with a row in each
    // table of the darts, the practice sums kept and an ended drill with a
    // dart; then `changes` made to it (to turn it into an older version).
    QString fileWithRows(const QString &name, const QStringList &changes) const
    {
        const QString path = dir_->filePath(name);
        {
            tavrix::StatsStore maker(QStringLiteral("maker"));
            if (!maker.open(path))
                qWarning("%s", qPrintable(maker.lastError()));
            const qint64 ann = maker.insertPlayer(QStringLiteral("Ann")).value_or(0);
            const qint64 game = maker.insertGame({ann, tavrix::GameType::X01_501, tavrix::SkillLevel::You,
                                                  QStringLiteral("Computer")})
                                    .value_or(0);
            maker.insertGameDart({game, ann, 1, 0, 1.5, 2.5, 3.5, 20, 3, 20, 3});
            maker.finishGame(game, {QStringLiteral("W"), 9, 501, 180, 141});
            const qint64 target = maker.insertStatTarget(ann, 19, 2).value_or(0);
            maker.insertStatThrow({ann, target, 0, 1, 2, 3, 19, 2});
            maker.keepPracticeSums(ann, {});
            const qint64 drill = maker.insertDrill({ann, 4, 0}).value_or(0);
            maker.insertDrillSet({{drill, ann, 1, 0, 1, 2, 3, 20, 1, 20, 1, 0, 0}});
            maker.finishDrill(drill, {60, true, false});
        }
        OtherConnection(path).exec(changes);
        return path;
    }
};
