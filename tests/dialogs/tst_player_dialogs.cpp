// The player dialogs, driven by their controls: names are checked on their
// trimmed form and stored as typed, quotes and all.

#include "../support/fake_messages.h"
#include "dialogs/new_user_dialog.h"
#include "dialogs/user_edit_dialog.h"
#include "dialogs/user_select_dialog.h"
#include "session/session.h"
#include "stats/stats_store.h"

#include <QApplication>
#include <QComboBox>
#include <QMessageBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace tavrix;

namespace {

template <typename T>
T *control(QWidget *dialog, const QString &name)
{
    T *found = dialog->findChild<T *>(name);
    if (!found)
        qFatal("no control %s", qPrintable(name));
    return found;
}

QStringList listed(QComboBox *drop)
{
    QStringList names;
    for (int i = 0; i < drop->count(); ++i)
        names.append(drop->itemText(i));
    return names;
}

} // namespace

class TestPlayerDialogs : public QObject {
    Q_OBJECT

    QTemporaryDir dir_;
    StatsStore store_;
    Session session_;
    FakeMessages messages_;

    QStringList notices() const
    {
        QStringList texts;
        for (const auto &shown : messages_.shown)
            texts.append(shown.text);
        return texts;
    }

private slots:
    void init()
    {
        QFile::remove(dir_.filePath(QStringLiteral("t.db")));
        QVERIFY(store_.open(dir_.filePath(QStringLiteral("t.db"))));
        session_ = Session{};
        messages_ = FakeMessages{};
    }
    void cleanup() { store_.close(); }

    // Blank names and names already in use once trimmed are refused; a
    // trailing blank is kept when the trimmed name is new.
    void newPlayerNamesAreCheckedTrimmedAndStoredAsTyped()
    {
        NewUserDialog dialog(store_, session_, messages_, nullptr);
        auto *name = control<QLineEdit>(&dialog, QStringLiteral("NameText"));
        auto *ok = control<QPushButton>(&dialog, QStringLiteral("OKButton"));
        QVERIFY(store_.insertPlayer(QStringLiteral("Ann")));

        name->setText(QStringLiteral("   "));
        ok->click();
        name->setText(QStringLiteral(" Ann  "));
        ok->click();
        name->setText(QStringLiteral("Bo\n"));
        ok->click();
        QCOMPARE(notices(), QStringList({QStringLiteral("Please enter at least one letter in the \"Name\" field"),
                                         QStringLiteral("Sorry.  That name is already in use."),
                                         QStringLiteral("A name cannot contain line breaks, control characters or \"|\".")}));
        QCOMPARE(store_.playerCount(), std::optional<int>(1));
        QCOMPARE(session_.currentPlayerId, qint64(0));

        const QString typed = QStringLiteral("Zoë \"Z\"; DROP TABLE players ");
        name->setText(typed);
        ok->click();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(session_.currentPlayerName, typed);
        QCOMPARE(store_.playerName(session_.currentPlayerId), std::optional<QString>(typed));
        QCOMPARE(store_.playerCount(), std::optional<int>(2));
    }

    // A rename passes the same checks as a new name; a refused one changes
    // nothing.
    void renamesAreCheckedLikeNewNames()
    {
        QVERIFY(store_.insertPlayer(QStringLiteral(" Ann")));
        session_.currentPlayerId = *store_.insertPlayer(QStringLiteral("Me"));
        session_.currentPlayerName = QStringLiteral("Me");
        UserEditDialog dialog(store_, session_, messages_, nullptr);
        QTimer::singleShot(0, [&] {
            control<QRadioButton>(&dialog, QStringLiteral("opOperation_2"))->click();
            auto *edit = control<QLineEdit>(&dialog, QStringLiteral("txtPlayerNameEdit"));
            for (const QString &name : {QStringLiteral("Ann "), QStringLiteral("Me|2"), QString(31, u'm')}) {
                edit->setText(name);
                control<QPushButton>(&dialog, QStringLiteral("btnChangeName"))->click();
            }
            control<QPushButton>(&dialog, QStringLiteral("btnClose"))->click();
        });
        dialog.dockShow();
        QCOMPARE(notices(), QStringList({QStringLiteral("Sorry.  That name is already in use."),
                                         QStringLiteral("A name cannot contain line breaks, control characters or \"|\"."),
                                         QStringLiteral("Please keep the name to 30 characters or fewer.")}));
        QCOMPARE(session_.currentPlayerName, QStringLiteral("Me"));
        QCOMPARE(store_.playerName(session_.currentPlayerId), std::optional<QString>(QStringLiteral("Me")));
    }

    // Ids past 16 bits: a new player numbered 65,536 becomes the current
    // player, is not offered for deletion and is the one renamed.
    void playersPast16BitIdsAreTheCurrentPlayer()
    {
        QSqlQuery query(store_.connection());
        QVERIFY(query.exec(QStringLiteral("INSERT INTO players (id, name) VALUES (65535, 'Old')")));
        NewUserDialog created(store_, session_, messages_, nullptr);
        control<QLineEdit>(&created, QStringLiteral("NameText"))->setText(QStringLiteral("New"));
        control<QPushButton>(&created, QStringLiteral("OKButton"))->click();
        QCOMPARE(session_.currentPlayerId, qint64(65536));

        UserEditDialog dialog(store_, session_, messages_, nullptr);
        QTimer::singleShot(0, [&] {
            QCOMPARE(listed(control<QComboBox>(&dialog, QStringLiteral("deletePlayerDrop"))),
                     QStringList{QStringLiteral("Old")});
            control<QRadioButton>(&dialog, QStringLiteral("opOperation_2"))->click();
            control<QLineEdit>(&dialog, QStringLiteral("txtPlayerNameEdit"))->setText(QStringLiteral("Newer"));
            control<QPushButton>(&dialog, QStringLiteral("btnChangeName"))->click();
            control<QPushButton>(&dialog, QStringLiteral("btnClose"))->click();
        });
        dialog.dockShow();
        QCOMPARE(store_.players(), std::optional<QList<PlayerRow>>({{65535, QStringLiteral("Old")},
                                                                    {65536, QStringLiteral("Newer")}}));
    }

    // Cancel changes nothing; OK takes the chosen player and tells the window.
    void selectionTakesTheChosenPlayer()
    {
        for (const char *name : {"Ann", "Bo 'B' Ström"})
            QVERIFY(store_.insertPlayer(QString::fromUtf8(name)));
        int chosen = 0;
        UserSelectDialog dialog(store_, session_, messages_, nullptr, [&] { ++chosen; });
        auto *drop = control<QComboBox>(&dialog, QStringLiteral("userDrop"));

        QTimer::singleShot(0, [&] { control<QPushButton>(&dialog, QStringLiteral("CancelButton"))->click(); });
        dialog.dockShow();
        QCOMPARE(session_.currentPlayerId, qint64(0));
        QCOMPARE(chosen, 0);

        QTimer::singleShot(0, [&] {
            QCOMPARE(listed(drop), QStringList({QStringLiteral("Ann"), QStringLiteral("Bo 'B' Ström")}));
            drop->setCurrentIndex(1);
            control<QPushButton>(&dialog, QStringLiteral("OKButton"))->click();
        });
        dialog.dockShow();
        QCOMPARE(session_.currentPlayerId, qint64(2));
        QCOMPARE(session_.currentPlayerName, QStringLiteral("Bo 'B' Ström"));
        QCOMPARE(chosen, 1);
    }

    // Manage Players: create keeps the current player, rename changes only
    // the name, delete asks and removes the player's practice rows but not
    // its games; the Delete option goes when no other player is left.
    void managePlayers()
    {
        session_.currentPlayerId = *store_.insertPlayer(QStringLiteral("Me"));
        session_.currentPlayerName = QStringLiteral("Me");
        UserEditDialog dialog(store_, session_, messages_, nullptr);
        auto *deleteOption = control<QRadioButton>(&dialog, QStringLiteral("opOperation_1"));
        auto *drop = control<QComboBox>(&dialog, QStringLiteral("deletePlayerDrop"));
        auto *deleteFrame = control<QGroupBox>(&dialog, QStringLiteral("fraDeletePlayer"));

        QTimer::singleShot(0, [&] {
            QVERIFY(!deleteOption->isEnabled());
            QVERIFY(!control<QGroupBox>(&dialog, QStringLiteral("fraCreatePlayer"))->isVisible());
            control<QRadioButton>(&dialog, QStringLiteral("opOperation_0"))->click();
            QVERIFY(control<QGroupBox>(&dialog, QStringLiteral("fraCreatePlayer"))->isVisible());
            control<QLineEdit>(&dialog, QStringLiteral("txtPlayerName"))->setText(QStringLiteral("Al \"Ace\""));
            control<QPushButton>(&dialog, QStringLiteral("btnCreatePlayer"))->click();
            QCOMPARE(session_.currentPlayerName, QStringLiteral("Me"));
            QVERIFY(deleteOption->isEnabled());
            QCOMPARE(listed(drop), QStringList{QStringLiteral("Al \"Ace\"")});

            control<QRadioButton>(&dialog, QStringLiteral("opOperation_2"))->click();
            auto *edit = control<QLineEdit>(&dialog, QStringLiteral("txtPlayerNameEdit"));
            QCOMPARE(edit->text(), QStringLiteral("Me"));
            control<QPushButton>(&dialog, QStringLiteral("btnChangeName"))->click();
            edit->setText(QStringLiteral("It's me"));
            control<QPushButton>(&dialog, QStringLiteral("btnChangeName"))->click();
            QCOMPARE(session_.currentPlayerName, QStringLiteral("It's me"));
            QCOMPARE(store_.playerName(session_.currentPlayerId), std::optional<QString>(QStringLiteral("It's me")));

            // The other player has practice and game rows.
            const qint64 al = *store_.playerIdByName(QStringLiteral("Al \"Ace\""));
            const qint64 target = *store_.insertStatTarget(al, 20, 1);
            QVERIFY(store_.insertStatThrow({al, target, 0, 0, 150, 0, 20, 1}));
            QVERIFY(store_.insertGame({al, GameType::X01_501, SkillLevel::BPlayer, QStringLiteral("Computer")}));

            deleteOption->click();
            QVERIFY(deleteFrame->isVisible());
            messages_.answers = {false, true};
            control<QPushButton>(&dialog, QStringLiteral("btnDeletePlayer"))->click();
            QCOMPARE(store_.playerCount(), std::optional<int>(2));
            control<QPushButton>(&dialog, QStringLiteral("btnDeletePlayer"))->click();
            QCOMPARE(store_.playerCount(), std::optional<int>(1));
            QVERIFY(!deleteOption->isEnabled());
            QVERIFY(!deleteOption->isChecked());
            QVERIFY(!deleteFrame->isVisible());
            control<QPushButton>(&dialog, QStringLiteral("btnClose"))->click();
        });
        dialog.dockShow();

        QCOMPARE(notices(), QStringList({QStringLiteral("Player \"Al \"Ace\"\" added."),
                                         QStringLiteral("Sorry.  That name is already in use."),
                                         QStringLiteral("Changed name to \"It's me\"."),
                                         QStringLiteral("Delete player Al \"Ace\" and all statistics?"),
                                         QStringLiteral("Delete player Al \"Ace\" and all statistics?")}));
        QCOMPARE(messages_.shown[3].title, QStringLiteral("DeleteAl \"Ace\"?"));
        QSqlQuery query(store_.connection());
        QVERIFY(query.exec(QStringLiteral("SELECT (SELECT count(*) FROM statstargets) + "
                                          "(SELECT count(*) FROM statsthrows), (SELECT count(*) FROM games)")));
        QVERIFY(query.next());
        QCOMPARE(query.value(0).toInt(), 0);
        QCOMPARE(query.value(1).toInt(), 1);
    }

    // The program's questions all give something up: No is the default, so
    // Enter alone answers No; Yes still takes a click.
    void questionsDefaultToNo()
    {
        SystemMessages messages;
        for (const bool clickYes : {false, true}) {
            QTimer::singleShot(0, [clickYes] {
                auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
                QVERIFY(box);
                QCOMPARE(box->defaultButton(), box->button(QMessageBox::No));
                if (clickYes)
                    box->button(QMessageBox::Yes)->click();
                else
                    QTest::keyClick(box, Qt::Key_Return);
            });
            QCOMPARE(messages.askYesNo(nullptr, QStringLiteral("Quit Game?"), QStringLiteral("Quit game in progress?")),
                     clickYes);
        }
    }
};

QTEST_MAIN(TestPlayerDialogs)
#include "tst_player_dialogs.moc"
