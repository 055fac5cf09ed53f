#pragma once

// What can become of an open statistics file while the program runs: it is
// deleted, moved away, replaced by another statistics file, or written over.

#include "core/stats/stats_store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <cstdio>

enum class Loss { Deleted, MovedAway, Replaced, WrittenOver };

inline void loseFile(const QString &path, Loss loss)
{
    switch (loss) {
    case Loss::Deleted:
        QVERIFY(QFile::remove(path));
        break;
    case Loss::MovedAway:
        QVERIFY(QFile::rename(path, path + QStringLiteral(".away")));
        break;
    case Loss::Replaced: {
        const QString other = QFileInfo(path).absoluteDir().filePath(QStringLiteral("other.db"));
        {
            tavrix::StatsStore maker(QStringLiteral("maker"));
            QVERIFY(maker.open(other));
        }
        QVERIFY(std::rename(QFile::encodeName(other).constData(), QFile::encodeName(path).constData()) == 0);
        break;
    }
    case Loss::WrittenOver: {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.write(QByteArray(4096, 'Z')) == 4096);
        break;
    }
    }
}
