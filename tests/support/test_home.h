#pragma once

// A private home for one test: the settings go to a temporary folder and the
// statistics database lies beside them, with the given players in it.

#include "core/stats/sqlite_store.h"

#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
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
        tavrix::SqliteStore seed(QStringLiteral("seed"));
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

// Types `name` into the "Human Opponent" dialog and clicks OK once the
// dialog the next action opens is up.
inline void answerOpponentName(const QString &name)
{
    QTimer::singleShot(0, [name] {
        QWidget *dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        dialog->findChild<QLineEdit *>(QStringLiteral("Text1"))->setText(name);
        dialog->findChild<QPushButton *>(QStringLiteral("OKButton"))->click();
    });
}
