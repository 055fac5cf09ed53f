// The player dialogs, driven by their controls, against a real database whose
// players are numbered past 16 bits.

#include "../support/fake_messages.h"
#include "../support/sql_rows.h"
#include "../support/test_home.h"
#include "ui/players/new_user_dialog.h"
#include "ui/players/user_edit_dialog.h"
#include "core/session/session.h"
#include "core/stats/stats_store.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace tavrix;

namespace {

// A control of a dialog by its objectName; a button unless told.
template <typename T = QPushButton>
T *in(QWidget *dialog, const char *name)
{
    return findControl<T>(dialog, name);
}

} // namespace

class TestPlayerDialogs : public QObject {
    Q_OBJECT

    QTemporaryDir dir_;
    StatsStore store_;
    Session session_;
    FakeMessages messages_;

    void addPlayerNumbered(qint64 id, const QString &name)
    {
        QVERIFY(OtherConnection(dir_.filePath(QStringLiteral("t.db")))
                    .exec({QStringLiteral("INSERT INTO players (id, name) VALUES (%1, '%2')").arg(id).arg(name)}));
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

    // New Player checks the name as typed, so a line break that trimming
    // would hide is refused and nothing changes; a new name makes the new
    // player, numbered past 16 bits, the current one. (Each refusal's text
    // is checked in tst_player_names; a name stored as typed, blanks and
    // quotes and all, at the first start in tst_main_window.)
    void newPlayerBecomesTheCurrentPlayer()
    {
        addPlayerNumbered(65535, QStringLiteral("Old"));
        NewUserDialog dialog(store_, session_, messages_, nullptr);
        in<QLineEdit>(&dialog, "NameText")->setText(QStringLiteral("Bo\n"));
        in(&dialog, "OKButton")->click();
        QCOMPARE(messages_.texts(), QStringList{"A name cannot contain line breaks, control characters or \"|\"."});
        QVERIFY(store_.playerCount() == 1 && session_.currentPlayerId == 0);

        in<QLineEdit>(&dialog, "NameText")->setText(QStringLiteral("Bo"));
        in(&dialog, "OKButton")->click();
        QVERIFY(dialog.result() == QDialog::Accepted && session_.currentPlayerId == 65536);
        QCOMPARE(session_.currentPlayerName, QStringLiteral("Bo"));
    }

    // Manage Players, for a player numbered past 16 bits: create keeps the
    // current player, who is never offered for deletion; a rename is checked
    // like a new name and changes only the name; delete asks and removes the
    // player's practice rows but not its games; the Delete option goes when
    // no other player is left.
    void managePlayers()
    {
        addPlayerNumbered(65536, QStringLiteral("Me"));
        session_.currentPlayerId = 65536;
        session_.currentPlayerName = QStringLiteral("Me");
        UserEditDialog dialog(store_, session_, messages_, nullptr);
        auto *deleteOption = in<QRadioButton>(&dialog, "opOperation_1");
        auto *deleteFrame = in<QGroupBox>(&dialog, "fraDeletePlayer");
        QTimer::singleShot(0, [&] {
            in<QRadioButton>(&dialog, "opOperation_0")->click();
            in<QLineEdit>(&dialog, "txtPlayerName")->setText(QStringLiteral("Al \"Ace\""));
            in(&dialog, "btnCreatePlayer")->click();
            auto *drop = in<QComboBox>(&dialog, "deletePlayerDrop");
            QVERIFY(drop->count() == 1 && drop->itemText(0) == QStringLiteral("Al \"Ace\""));

            // The name offered for a rename is the current one, already in use.
            in<QRadioButton>(&dialog, "opOperation_2")->click();
            in(&dialog, "btnChangeName")->click();
            in<QLineEdit>(&dialog, "txtPlayerNameEdit")->setText(QStringLiteral("It's me"));
            in(&dialog, "btnChangeName")->click();
            QVERIFY(session_.currentPlayerName == QStringLiteral("It's me") && session_.currentPlayerId == 65536);
            QCOMPARE(store_.playerName(65536), std::optional<QString>(QStringLiteral("It's me")));

            // The other player has practice and game rows.
            const qint64 al = *store_.playerIdByName(QStringLiteral("Al \"Ace\""));
            const qint64 target = *store_.insertStatTarget(al, 20, 1);
            QVERIFY(store_.insertStatThrow({al, target, 0, 0, 150, 0, 20, 1}));
            QVERIFY(store_.insertGame({al, GameType::X01_501, SkillLevel::BPlayer, QStringLiteral("Computer")}));
            deleteOption->click();
            messages_.answers = {false, true};
            in(&dialog, "btnDeletePlayer")->click();
            in(&dialog, "btnDeletePlayer")->click();
            QVERIFY(store_.playerCount() == 1);
            QVERIFY(!deleteOption->isEnabled() && !deleteOption->isChecked() && !deleteFrame->isVisible());
            in(&dialog, "btnClose")->click();
        });
        dialog.dockShow();

        const QString question = QStringLiteral("Delete player Al \"Ace\" and all statistics?");
        QCOMPARE(messages_.texts(), QStringList({QStringLiteral("Player \"Al \"Ace\"\" added."),
                                                QStringLiteral("Sorry.  That name is already in use."),
                                       QStringLiteral("Changed name to \"It's me\"."), question, question}));
        QCOMPARE(messages_.shown[3].title, QStringLiteral("DeleteAl \"Ace\"?"));
        QCOMPARE(sqlRows(store_.connection(), QStringLiteral("SELECT (SELECT count(*) FROM statstargets) + (SELECT"
                                                             " count(*) FROM statsthrows), (SELECT count(*) FROM games)")),
                 (QList<QVariantList>{{0, 1}}));
    }

    // The program's questions all give something up: No is the default, so
    // Enter alone answers No.
    void questionsDefaultToNo()
    {
        SystemMessages messages;
        QTimer::singleShot(0, [] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            QVERIFY(box && box->defaultButton() == box->button(QMessageBox::No));
            QTest::keyClick(box, Qt::Key_Return);
        });
        QVERIFY(!messages.askYesNo(nullptr, QStringLiteral("Quit Game?"), QStringLiteral("Quit game in progress?")));
    }
};

QTEST_MAIN(TestPlayerDialogs)
#include "tst_player_dialogs.moc"
