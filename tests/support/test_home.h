#pragma once

// A private home for one test: the settings go to a temporary folder and the
// statistics database lies beside them, with the given players in it.

#include "stats/stats_store.h"

#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

struct TestHome {
    QTemporaryDir dir;
    QString dbPath = dir.filePath(QStringLiteral("tavrix.db"));

    explicit TestHome(const QStringList &players = {})
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir.path());
        addPlayers(players);
    }
    void addPlayers(const QStringList &names) const
    {
        if (names.isEmpty())
            return;
        tavrix::StatsStore seed(QStringLiteral("seed"));
        QVERIFY(seed.open(dbPath));
        for (const QString &name : names)
            QVERIFY(seed.insertPlayer(name));
    }
};

// A control of a window by its objectName.
template <typename T>
T *findControl(const QWidget *window, const char *name)
{
    T *found = window->findChild<T *>(QString::fromLatin1(name));
    if (!found)
        qWarning("no control %s", name);
    return found;
}
