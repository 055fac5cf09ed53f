#pragma once

// A private home for one test: the settings go to a temporary folder and the
// statistics database lies beside them, with the given players in it.

#include "core/stats/stats_store.h"

#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTcpServer>
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

// Runs `act` on the next modal dialog once it is up.
template <typename Act>
void whenDialogShows(Act act)
{
    QTimer::singleShot(0, [act] {
        QTRY_VERIFY(QApplication::activeModalWidget());
        act(QApplication::activeModalWidget());
    });
}

// Runs `act`; a modal dialog it opens is closed at once and reported.
template <typename Act>
bool opensADialog(Act act)
{
    QWidget *opened = nullptr;
    QTimer::singleShot(0, [&opened] { if ((opened = QApplication::activeModalWidget())) opened->hide(); });
    act();
    QCoreApplication::processEvents();
    return opened != nullptr;
}

// A port of 127.0.0.1 nobody listens on now.
inline quint16 freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}
