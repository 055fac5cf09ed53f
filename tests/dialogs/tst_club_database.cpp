// "Club Database" and "Club Database Password": the fields show the stored
// club database, input that names no server is refused with its reason and
// stores nothing, the connection test answers without freezing the window,
// each choice is stored (never with the password) and reaches the window's
// hook, the password prompt names the server, and on a club database the
// File menu copies the local statistics into it once.

#include "../support/data_table.h"
#include "../support/program_test.h"
#include "../support/test_server.h"
#include "core/startup/club_settings.h"
#include "core/startup/settings.h"
#include "ui/dialogs/club_database_dialog.h"
#include "ui/dialogs/server_password_dialog.h"

#include "core/stats/stats_store.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QMenu>

using namespace tavrix;

namespace {

QByteArray settingsFile()
{
    QFile file(settingsFilePath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

ServerAddress storedClub()
{
    ServerAddress server;
    server.host = QStringLiteral("darts.club.example");
    server.port = 6543;
    server.database = QStringLiteral("Dart's Zürich");
    server.user = QStringLiteral("Ann O'Neil");
    server.tls = TlsMode::Require;
    return server;
}

void type(QWidget *dialog, const char *field, const QString &text)
{
    findControl<QLineEdit>(dialog, field)->setText(text);
}

void click(QWidget *dialog, const char *button)
{
    findControl<QPushButton>(dialog, button)->click();
}

} // namespace

class TestClubDatabase : public ProgramTest {
    Q_OBJECT

    std::unique_ptr<ClubDatabaseDialog> dialog_;

    ClubDatabaseDialog *openDialog(bool clubInUse)
    {
        const std::optional<ServerAddress> inUse =
            clubInUse ? std::optional<ServerAddress>(readClubSettings().server) : std::nullopt;
        dialog_ = std::make_unique<ClubDatabaseDialog>(inUse, nullptr);
        dialog_->show();
        return dialog_.get();
    }
    QString testResult(ServerAddress server)
    {
        auto *dialog = openDialog(false);
        type(dialog, "txtClubHost", server.host);
        type(dialog, "txtClubPort", QString::number(server.port));
        type(dialog, "txtClubDatabase", server.database);
        type(dialog, "txtClubUser", server.user);
        auto *tls = findControl<QComboBox>(dialog, "cboClubTls");
        tls->setCurrentIndex(tls->findData(static_cast<int>(server.tls)));
        click(dialog, "cmdTestConnection");
        [&] { QTRY_VERIFY_WITH_TIMEOUT(!dialog->testing(), 15000); }();
        return findControl<QLabel>(dialog, "lblClubTestResult")->text();
    }

private slots:
    void init()
    {
        home_ = std::make_unique<TestHome>();
        saveClubSettings({storedClub(), false});
    }
    void cleanup()
    {
        dialog_.reset();
        program_.reset();
    }

    // A port out of range or no number, a host with a blank and a missing
    // user keep the dialog open with the reason; nothing is stored or tested.
    void inputNamingNoServerIsRefused_data()
    {
        addTable<QString, QString, QString>({"field", "text", "problem"},
            {{"port 0", "txtClubPort", "0", "The port must be a whole number from 1 to 65535, not \"0\"."},
             {"port 65536", "txtClubPort", "65536", "The port must be a whole number from 1 to 65535, not \"65536\"."},
             {"port with a letter", "txtClubPort", "54x", "The port must be a whole number from 1 to 65535, not \"54x\"."},
             {"host with a blank", "txtClubHost", "club host", "The host is a name or an address without spaces, not \"club host\"."},
             {"no user", "txtClubUser", " ", "Enter the user this board logs in as on the club's server."}});
    }
    void inputNamingNoServerIsRefused()
    {
        QFETCH(QString, field);
        QFETCH(QString, text);
        const QByteArray before = settingsFile();
        auto *dialog = openDialog(true);
        type(dialog, qPrintable(field), text);
        for (const char *button : {"cmdTestConnection", "cmdUseClub"}) {
            click(dialog, button);
            QVERIFY(dialog->isVisible() && !dialog->testing());
            QTEST(findControl<QLabel>(dialog, "lblClubProblem")->text(), "problem");
        }
        QCOMPARE(findControl<QLabel>(dialog, "lblClubTestResult")->text(), QString());
        QCOMPARE(settingsFile(), before);
    }

    // The test server answers; nothing listens on port 1.
    void theTestSaysWhatHappened()
    {
        QString error;
        const std::optional<ServerAddress> server = TestServer::address(error);
        QVERIFY2(server, qPrintable(error));
        QCOMPARE(testResult(*server), QStringLiteral("Connected to %1.").arg(describeServer(*server)));
        ServerAddress closed = *server;
        closed.port = 1;
        const QString refused = testResult(closed);
        QVERIFY2(refused.startsWith(QStringLiteral("Cannot reach the club database at %1, port 1: nothing answers "
                                                   "there (the server may be stopped")
                                        .arg(server->host)), qPrintable(refused));
        QVERIFY(findControl<QPushButton>(dialog_.get(), "cmdTestConnection")->isEnabled());
        QCOMPARE(readClubSettings(), (ClubSettings{storedClub(), false}));
    }

    // "Use Club Database" stores what is typed but the password, which only
    // the choice carries; "Use Local File" switches the club off and keeps
    // its fields, and is offered only while the club is in use; "Cancel"
    // changes nothing.
    void choicesAreStoredWithoutThePassword()
    {
        // The fields start from the stored club.
        auto *dialog = openDialog(true);
        QCOMPARE(findControl<QLineEdit>(dialog, "txtClubPassword")->echoMode(), QLineEdit::Password);
        type(dialog, "txtClubHost", QStringLiteral(" 192.0.2.7 "));
        type(dialog, "txtClubPassword", QStringLiteral("Pw-4b1d"));
        findControl<QComboBox>(dialog, "cboClubTls")->setCurrentIndex(2);
        click(dialog, "cmdUseClub");
        ServerAddress chosen = storedClub();
        chosen.host = QStringLiteral("192.0.2.7");
        chosen.tls = TlsMode::VerifyFull;
        QVERIFY(!dialog->isVisible() && dialog->choice().action == ClubChoice::UseClub);
        QCOMPARE(dialog->choice().server, chosen);
        QCOMPARE(dialog->choice().password, QStringLiteral("Pw-4b1d"));
        QCOMPARE(readClubSettings(), (ClubSettings{chosen, true}));
        QVERIFY(!settingsFile().contains("Pw-4b1d"));

        dialog = openDialog(true);
        type(dialog, "txtClubUser", QStringLiteral("someone else"));
        click(dialog, "cmdUseLocalFile");
        QVERIFY(dialog->choice().action == ClubChoice::UseLocalFile);
        QCOMPARE(readClubSettings(), (ClubSettings{chosen, false}));

        QVERIFY(!findControl<QPushButton>(openDialog(false), "cmdUseLocalFile")->isEnabled());
        const QByteArray before = settingsFile();
        dialog = openDialog(true);
        type(dialog, "txtClubUser", QStringLiteral("someone else"));
        click(dialog, "cmdCancel");
        QVERIFY(dialog->choice().action == ClubChoice::Cancelled && settingsFile() == before);
    }

    // The entry ends the Options menu. The hook gets the choice; when it
    // cannot use the club database, the stored choice stays the one in use.
    void theMenuHandsTheChoiceToTheWindow()
    {
        startProgram();
        saveClubSettings({storedClub(), false});
        const QList<QAction *> entries = control<QMenu>("mnuOptions")->actions();
        QCOMPARE(entries.last()->objectName(), QStringLiteral("mnuOptionsClubDatabase"));
        QCOMPARE(entries.first()->objectName(), QStringLiteral("mnuOptionsChangePlayer"));
        QList<ClubChoice> handed;
        window()->onClubChoice = [&handed](const ClubChoice &choice) { return handed.append(choice), false; };
        whenDialogShows([](QWidget *dialog) {
            type(dialog, "txtClubPassword", QStringLiteral("Pw-77"));
            click(dialog, "cmdUseClub");
        });
        action("mnuOptionsClubDatabase")->trigger();
        QCOMPARE(handed.size(), 1);
        QCOMPARE(handed[0].server, storedClub());
        QCOMPARE(handed[0].password, QStringLiteral("Pw-77"));
        QCOMPARE(readClubSettings(), (ClubSettings{storedClub(), false}));
    }

    // The prompt names the user and the server, or this computer for the
    // local socket; OK needs a password, Cancel gives none.
    void thePasswordPromptNamesTheServer()
    {
        ServerAddress local = storedClub();
        local.host.clear();
        QCOMPARE(ServerPasswordDialog::promptFor(storedClub()),
                 QStringLiteral("Password of Ann O'Neil for the club database at darts.club.example, port 6543:"));
        QCOMPARE(ServerPasswordDialog::promptFor(local), QStringLiteral("Password of Ann O'Neil for the club database on this computer:"));
        for (const bool given : {true, false}) {
            whenDialogShows([given](QWidget *dialog) {
                QPushButton *ok = dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
                QVERIFY(!ok->isEnabled());
                type(dialog, "txtServerPassword", QStringLiteral("it's mine"));
                given ? ok->click() : dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel)->click();
            });
            QCOMPARE(ServerPasswordDialog::ask(storedClub(), nullptr),
                     given ? std::optional<QString>(QStringLiteral("it's mine")) : std::nullopt);
        }
    }

    // The entry is there only on a club database. It copies the game Ann
    // played on the file into her rows there, and a second copy nothing.
    // The dialog then names that database, not the one stored.
    void theLocalStatisticsAreCopiedOnce()
    {
        startProgram();
        program_->localDatabasePath = home_->dbPath;
        QVERIFY(!action("mnuCopyStatsToClub")->isVisible());
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        playSet({"T20", "T20", "T20"});
        messages_.answers = {true};
        QTest::mouseClick(control<QPushButton>("btnQuitGame"), Qt::LeftButton);

        const ServerAddress club = TestServer::freshDatabase(QStringLiteral("localcopy"));
        {
            StatsStore seed(QStringLiteral("seed"));
            QVERIFY(seed.open(StoreAddress(club), {}));
            QVERIFY(seed.insertPlayer(QStringLiteral("Zed")) && seed.insertPlayer(QStringLiteral("Ann")));
        }
        whenDialogShows([&club](QWidget *dialog) {
            type(dialog, "txtClubHost", club.host);
            type(dialog, "txtClubPort", QString::number(club.port));
            type(dialog, "txtClubDatabase", club.database);
            type(dialog, "txtClubUser", club.user);
            click(dialog, "cmdUseClub");
        });
        action("mnuOptionsClubDatabase")->trigger();
        QVERIFY2(program_->store().server(), qPrintable(messages_.texts().join('\n')));
        QVERIFY(action("mnuCopyStatsToClub")->isVisible());

        messages_ = {};
        action("mnuCopyStatsToClub")->trigger();
        QCOMPARE(messages_.texts(), (QStringList{
            QStringLiteral("Copy Ann's games, practice and drills from the statistics file on this computer (%1) into "
                           "the club database (%2)?\r\n\r\nWhat was copied from there before is left out.")
                .arg(QDir::toNativeSeparators(home_->dbPath), describeServer(club)),
            QStringLiteral("Copied into the club database: 1 game with 4 darts.")}));
        QCOMPARE(rows(QStringLiteral("SELECT players_id, setseq, dartseq, score, ring FROM gamesdarts"
                                     " ORDER BY setseq, dartseq")),
                 (QList<QVariantList>{{2, 0, 1, 25, 2}, {2, 1, 0, 20, 3}, {2, 1, 1, 20, 3}, {2, 1, 2, 20, 3}}));

        messages_ = {};
        action("mnuCopyStatsToClub")->trigger();
        QCOMPARE(messages_.texts(QStringLiteral("notice")),
                 QStringList{QStringLiteral("Everything of Ann's in the statistics file on this computer was copied "
                                            "into the club database before. Nothing was copied again.")});
        QCOMPARE(rows(QStringLiteral("SELECT count(*) FROM games")), (QList<QVariantList>{{1}}));

        // "Club Database" shows the server in use, whatever is stored.
        saveClubSettings({storedClub(), true});
        QStringList shown;
        whenDialogShows([&shown](QWidget *dialog) {
            shown << findControl<QLineEdit>(dialog, "txtClubPort")->text()
                  << findControl<QLineEdit>(dialog, "txtClubDatabase")->text();
            click(dialog, "cmdUseLocalFile");
        });
        action("mnuOptionsClubDatabase")->trigger();
        QCOMPARE(shown, (QStringList{QString::number(club.port), club.database}));
        QVERIFY(!program_->store().server() && !action("mnuCopyStatsToClub")->isVisible());
    }
};

QTEST_MAIN(TestClubDatabase)
#include "tst_club_database.moc"
