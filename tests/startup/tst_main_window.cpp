// Start-up, shutdown, modes and menus, driven through the real main window.

#include "../support/data_table.h"
#include "../support/program_test.h"
#include "ui/play/game_frame.h"
#include "ui/play/game_setup_form.h"
#include "ui/review/review_controller.h"
#include "core/startup/settings.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QRegularExpression>
#include <QSpinBox>

#include <unistd.h>

using namespace tavrix;

namespace {

// What stands in the way of a start, besides what the file holds.
enum class Trouble { None, MissingFolder, ReadOnlyFile, ReadOnlyFolder, Held };

void click(QWidget *dialog, const char *button)
{
    auto *b = dialog->findChild<QPushButton *>(QString::fromLatin1(button));
    QVERIFY2(b, button);
    b->click();
}

} // namespace

Q_DECLARE_METATYPE(Trouble)

class TestMainWindow : public ProgramTest {
    Q_OBJECT

    std::unique_ptr<OtherConnection> holder_;

    bool checked(const char *name) const { return control<QAbstractButton>(name)->isChecked(); }
    // The program started again in the same home, its window as it opens:
    // the match's set-up is read, not the window's fit on a small screen.
    void reopenProgram()
    {
        program_.reset();
        program_ = std::make_unique<Program>(messages_, home_->dbPath, &sounds_);
        QVERIFY(program_->Main());
    }

private slots:
    void init()
    {
        home_ = std::make_unique<TestHome>();
        messages_ = {};
    }
    void cleanup()
    {
        program_.reset();
        holder_.reset();
        const auto all = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
        QFile::setPermissions(home_->dir.path(), all);
        QFile::setPermissions(home_->dbPath, all);
    }

    // What keeps the program from starting, or from writing, is named at
    // start with the cause in plain words; a refused file is not touched.
    // Root may write read-only places, so CI also runs this as "nobody".
    void troubleAtStartIsNamed_data()
    {
        QTest::addColumn<Trouble>("trouble");
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<QStringList>("sql"); // then run on the file by another program
        QTest::addColumn<bool>("starts");
        QTest::addColumn<QString>("message"); // "kind|title|text"; %1 the file, %2 its folder
        QTest::addColumn<bool>("sayOnce"); // the next start says nothing
        auto row = [](const char *tag, Trouble trouble, const QStringList &sql, bool starts, const char *message,
                      bool sayOnce = false, QSize screen = {1024, 768}) {
            QTest::newRow(tag) << trouble << screen << sql << starts << QString::fromUtf8(message) << sayOnce;
        };
        const char *smallScreen = "notice|800 x 600 required|Sorry.\r\n\r\nTavrix! Requires 800x600 screen resolution or "
                                  "higher to work properly.\r\n\r\nPlease use the Display Settings Control Panel to "
                                  "increase your screen resolution";
        // The screen check comes before anything else; 800 x 600 is enough.
        row("whole, on 800 x 600", Trouble::None, {}, true, "", false, {800, 600});
        row("screen 799 wide", Trouble::None, {}, false, smallScreen, false, {799, 600});
        row("screen 599 high", Trouble::None, {}, false, smallScreen, false, {1024, 599});
        row("missing folder", Trouble::MissingFolder, {}, false,
            "error|Tavrix!|The folder of the statistics database does not exist: %2");
        // A database of another program is left byte for byte as it was: no
        // journal mode switched, no table added.
        row("another program's database", Trouble::None, {"CREATE TABLE recipes (name TEXT)"}, false,
            "error|Tavrix!|Cannot open the statistics database %1: it holds tables of another program; "
            "Tavrix leaves it as it is");
        row("read-only file", Trouble::ReadOnlyFile, {}, false,
            "error|Tavrix!|Cannot open the statistics database %1: the file is read-only");
        row("read-only folder", Trouble::ReadOnlyFolder, {}, false,
            "error|Tavrix!|Cannot open the statistics database %1: the folder %2 is read-only");
        row("file in use", Trouble::Held, {}, true,
            "error|Tavrix!|The statistics file %1 cannot be written: the statistics file is in use by another "
            "program. Games and practice will not be saved until it can.");
        // A damaged checkout chart is mended in the file and the user told once.
        row("chart: garbage, a missing row, a wrong sum", Trouble::None,
            {"UPDATE outchart SET singleout = 'x', doubleout = 'T20,,' WHERE points IN (20, 99)",
             "DELETE FROM outchart WHERE points = 57",
             "UPDATE outchart SET doubleout = 'T20,D10' WHERE points = 100"},
            true, "notice|Tavrix!|The checkout chart in %1 was damaged: 4 rows were replaced by the chart that comes with Tavrix.",
            true);
        row("chart: a missing row, a score twice", Trouble::None,
            {"DELETE FROM outchart WHERE points = 57", "INSERT INTO outchart VALUES (61, 'S1', '')"}, true,
            "notice|Tavrix!|The checkout chart in %1 was damaged: 1 row was replaced by the chart that comes "
            "with Tavrix, and 1 row that belongs to no score or repeats one was removed.", true);
        // A repair that cannot be written: the bundled rows all the same,
        // and the notice at every start.
        row("chart repair refused", Trouble::None,
            {"UPDATE outchart SET doubleout = 'x' WHERE points = 100",
             "CREATE TRIGGER readonly BEFORE DELETE ON outchart"
             " BEGIN SELECT RAISE(ABORT, 'attempt to write a readonly database'); END"},
            true, "notice|Tavrix!|The checkout chart in %1 is damaged, and the repair cannot be saved (*readonly*). "
            "Until it can, Tavrix uses the chart that comes with it in place of the damaged rows.");
    }
    void troubleAtStartIsNamed()
    {
        QFETCH(Trouble, trouble);
        QFETCH(QSize, screen);
        QFETCH(QStringList, sql);
        QFETCH(bool, starts);
        QFETCH(QString, message);
        QFETCH(bool, sayOnce);
        const bool readOnly = trouble == Trouble::ReadOnlyFile || trouble == Trouble::ReadOnlyFolder;
        if (readOnly && geteuid() == 0)
            QSKIP("root writes read-only places; read_only_start_as_nobody runs this as nobody");
        const QString path = trouble == Trouble::MissingFolder ? home_->dir.filePath(QStringLiteral("missing/t.db"))
                                                               : home_->dbPath;
        const QString folder = QFileInfo(path).absolutePath();
        // Ann is in the database first, unless there is to be no file or another program's.
        if (starts || readOnly)
            home_->addPlayers({QStringLiteral("Ann")});
        if (!sql.isEmpty())
            QVERIFY(OtherConnection(path).exec(sql));
        if (trouble == Trouble::ReadOnlyFile)
            QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
        if (trouble == Trouble::ReadOnlyFolder)
            QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        if (trouble == Trouble::Held) {
            holder_ = std::make_unique<OtherConnection>(path, QStringLiteral("holder"));
            QVERIFY(holder_->exec({QStringLiteral("BEGIN EXCLUSIVE")}));
        }
        QFile file(path);
        const bool existed = file.exists();
        const QByteArray before = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        file.close();
        message.replace(QStringLiteral("%1"), QDir::toNativeSeparators(path))
            .replace(QStringLiteral("%2"), QDir::toNativeSeparators(folder));
        // "*" in the message stands for any text.
        const QRegularExpression expected(QRegularExpression::anchoredPattern(QRegularExpression::escape(message).replace(
                                              QStringLiteral("\\*"), QStringLiteral(".*"))),
                                          QRegularExpression::DotMatchesEverythingOption);

        for (int run = 1; run <= 2; ++run) {
            program_ = std::make_unique<Program>(messages_, path, &sounds_);
            program_->screenSize = [screen] { return screen; };
            QCOMPARE(program_->Main(), starts);
            QCOMPARE(program_->exitCode(), starts ? 0 : 1);
            QCOMPARE(messages_.shown.size(), message.isEmpty() || (sayOnce && run == 2) ? 0 : 1);
            for (const FakeMessages::Shown &shown : std::as_const(messages_.shown)) {
                const QString said = shown.kind + '|' + shown.title + '|' + shown.text;
                QVERIFY2(expected.match(said).hasMatch(), qPrintable(said));
            }
            if (starts) {
                QCOMPARE(program_->checkoutChart().routeText(100, true), QStringLiteral("T20, D20"));
                QCOMPARE(program_->checkoutChart().routeText(57, true), QStringLiteral("S17, D20"));
            } else {
                QVERIFY(!program_->window() && !QFile::exists(path + QStringLiteral("-wal")));
                QCOMPARE(file.exists(), existed);
                QCOMPARE(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray(), before);
                file.close();
            }
            program_.reset();
            messages_ = {};
        }
    }

    // The first player is typed into New Player, one of several chosen in
    // Select Player (the first of the table offered first); the player's
    // darts are recorded under that id.
    // Cancelling the first player ends the program quietly.
    void playersAtStart_data()
    {
        // ids: players "P<id>" in the database; typed: the first player's
        // name, null for Cancel; chosen: in Select Player. Ids past 16 bits:
        // 65,536 once read as 0 ("no player") and ended the program at start;
        // 40,000 recorded games under a negative id.
        addTable<QList<qint64>, QString, int>({"ids", "typed", "chosen"},
            {{"first start", {}, QStringLiteral(" O'Brien \"Bo\" "), 0}, {"first start cancelled", {}, QString(), 0},
             {"only player 65,536", {65536}, QString(), 0}, {"40,000 of two", {40000, 65536}, QString(), 0},
             {"65,536 of two", {40000, 65536}, QString(), 1}});
    }
    void playersAtStart()
    {
        QFETCH(QList<qint64>, ids);
        QFETCH(QString, typed);
        QFETCH(int, chosen);
        if (!ids.isEmpty()) {
            StatsStore seed(QStringLiteral("seed"));
            QVERIFY(seed.open(home_->dbPath));
            for (qint64 id : ids)
                QVERIFY(QSqlQuery(seed.connection()).exec(QStringLiteral("INSERT INTO players (id, name) VALUES (%1, 'P%1')").arg(id)));
        }
        if (ids.size() != 1) {
            whenDialogShows([&](QWidget *dialog) {
                if (ids.isEmpty()) {
                    QCOMPARE(dialog->objectName(), QStringLiteral("NewUserDialog"));
                    dialog->findChild<QLineEdit *>(QStringLiteral("NameText"))->setText(typed);
                    return click(dialog, typed.isNull() ? "Command1" : "OKButton");
                }
                QCOMPARE(dialog->objectName(), QStringLiteral("UserSelectDialog"));
                auto *drop = dialog->findChild<QComboBox *>(QStringLiteral("userDrop"));
                QCOMPARE(drop->currentText(), QStringLiteral("P%1").arg(ids[0]));
                drop->setCurrentIndex(chosen);
                click(dialog, "OKButton");
            });
        }
        program_ = std::make_unique<Program>(messages_, home_->dbPath, &sounds_);
        const bool started = program_->Main();
        if (typed.isNull() && ids.isEmpty()) {
            QVERIFY(!started && program_->exitCode() == 0 && messages_.shown.isEmpty());
            QVERIFY(program_->isShutDown() && !program_->store().isOpen() && !window()->isVisible());
            return;
        }
        QVERIFY(started);
        const qint64 id = ids.isEmpty() ? 1 : ids[chosen];
        const QString name = ids.isEmpty() ? typed : QStringLiteral("P%1").arg(id);
        QCOMPARE(program_->session().currentPlayerId, id);
        QCOMPARE(program_->store().playerName(id), std::optional<QString>(name));
        QCOMPARE(text("PlayerNameText"), QStringLiteral("Hey, ") + name + QStringLiteral("!"));
        QCOMPARE(window()->windowTitle(), QStringLiteral("Halvern Tavrix!"));

        // Against a person at this board: both corks, then one set.
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        playSet({"T20", "T20", "S1"});
        const QString mine = QStringLiteral("SUM(players_id = %1)").arg(id);
        QCOMPARE(rows(QStringLiteral("SELECT count(*), %1 FROM gamesdarts").arg(mine)), (QList<QVariantList>{{4, 4}}));
        QCOMPARE(rows(QStringLiteral("SELECT count(*), %1 FROM games").arg(mine)), (QList<QVariantList>{{1, 1}}));
        QVERIFY(messages_.shown.isEmpty());
    }

    // A running game is not lost by the Mode menu, a player dialog, Exit or
    // closing the window: each asks first, and No keeps the game and the
    // window. The current mode's entry is disabled.
    void aRunningGameIsProtected_data()
    {
        addTable<QByteArray>({"entry"}, // none: the window is closed
            {{"practice", "mnuModePractice"}, {"change player", "mnuOptionsChangePlayer"},
             {"edit players", "mnuOptionsEditPlayers"}, {"exit", "mnuExit"}, {"closing the window", ""}});
    }
    void aRunningGameIsProtected()
    {
        QFETCH(QByteArray, entry);
        startProgram();
        // A game against the computer has started: its cork is awaited.
        press(QStringLiteral("Start Game"));
        messages_.answers = {false};
        if (entry.isEmpty())
            QVERIFY(!window()->close());
        else
            QVERIFY(!opensADialog([&] { action(entry.constData())->trigger(); }));
        QCOMPARE(messages_.titles(), QStringList{QStringLiteral("Quit Game?")});
        QCOMPARE(messages_.shown[0].text, QStringLiteral("Quit game in progress?"));
        QVERIFY(window()->isVisible() && !program_->isShutDown() && !action("mnuModePlay")->isEnabled());
    }

    // Yes (the answer when none is queued) goes on as before; the game
    // still runs, so Exit asks too. (Yes to practice is played in
    // tst_games.)
    void yesGivesTheGameUp()
    {
        startProgram();
        press(QStringLiteral("Start Game"));
        QVERIFY(opensADialog([&] { action("mnuOptionsEditPlayers")->trigger(); }));
        action("mnuExit")->trigger();
        QVERIFY(program_->isShutDown() && !program_->store().isOpen() && !window()->isVisible());
        QCOMPARE(messages_.shown.size(), 2);

        // Exit and closing the window shut down once: a database opened
        // again after the shutdown is not closed by a second one.
        QVERIFY(program_->store().open(home_->dbPath));
        window()->show();
        window()->close();
        QVERIFY(program_->store().isOpen());
    }

    // The unit, the sound and the play set-up chosen last are stored at once
    // and chosen again at the next start, the set-up through the same
    // handlers as a click; "You" only when it can be played.
    void choicesSurviveARestart()
    {
        startProgram();
        action("mnuOptionsUseCms")->trigger();
        QCOMPARE(getSetting(QStringLiteral("Units")), QStringLiteral("cm"));
        action("mnuOptionsSound")->trigger();
        for (const char *choice : {"opGame_0", "opSkill_2", "opCricketOptions_0", "chkKeepCricketStats", "opOpponent_1"})
            QTest::mouseClick(control<QAbstractButton>(choice), Qt::LeftButton, {}, QPoint(6, 6));

        restartProgram();
        QVERIFY(program_->session().useCms && !program_->sounds().isEnabled());
        QVERIFY(!action("mnuOptionsSound")->isChecked() && action("mnuOptionsUseCms")->isChecked());
        for (const char *name : {"opGame_0", "opSkill_2", "opCricketOptions_0", "opOpponent_1"})
            QVERIFY2(checked(name), name);
        QVERIFY(!checked("chkKeepCricketStats") && !checked("chkKeep01stats"));
        QVERIFY(!control<QGroupBox>("fraCricketOptions")->isHidden() && control<QGroupBox>("fra01Options")->isHidden());
        // A person as opponent asks for the name only at "Start Game".
        QVERIFY(!QApplication::activeModalWidget() && messages_.shown.isEmpty());

        // "You" without enough darts keeps "B-Player" (with enough it is
        // chosen again, in modesShowTheYouProfile); 301 checks Double In.
        for (const auto &[key, value] : {std::pair{"Game", "2"}, {"Skill", "4"}, {"Opponent", "1"}})
            saveSetting(QString::fromLatin1(key), QString::fromLatin1(value));
        restartProgram();
        QVERIFY(checked("opGame_1") && checked("chkDoubleIn") && checked("opSkill_0"));
    }

    // The match set-up the user chose is stored at once and chosen again at
    // the next start; a format the program writes on the frame (a network
    // server's) is not.
    void matchSetUpSurvivesARestart()
    {
        startProgram();
        auto *format = control<QComboBox>("cboMatchFormat");
        auto *legs = control<QSpinBox>("spnLegs");
        auto *sets = control<QSpinBox>("spnSets");
        QVERIFY(format->currentIndex() == 0 && legs->value() == 3 && sets->value() == 2);
        QTest::keyClick(format, Qt::Key_Down);
        QTest::keyClick(format, Qt::Key_Down);
        for (QSpinBox *spin : {legs, sets}) {
            QTest::keyClick(spin, Qt::Key_Up);
            // Enter ends the editing; sent to the box itself, past the
            // window's own Enter.
            QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
            QApplication::sendEvent(spin, &enter);
        }
        QCOMPARE(format->currentText(), QStringLiteral("Sets"));
        GameSetupForm(*window()->findChild<GameFrame *>()).showMatchFormat(MatchFormat::firstToLegs(11));
        QCOMPARE(legs->value(), 11);

        reopenProgram();
        format = control<QComboBox>("cboMatchFormat");
        QCOMPARE(format->currentIndex(), 2);
        QCOMPARE(control<QSpinBox>("spnLegs")->value(), 4);
        QCOMPARE(control<QSpinBox>("spnSets")->value(), 3);
    }

    // A stored value no format allows keeps the default; legs beyond a set's
    // bound are cut to it, as when the user chooses sets.
    void storedMatchValuesAreChecked_data()
    {
        addTable<QString, QString, QString, int, int, int>({"format", "legs", "sets", "index", "legsShown", "setsShown"},
            {{"missing", "", "", "", 0, 3, 2}, {"garbled", "sets", "three", "2.5", 0, 3, 2},
             {"beyond", "4", "12", "8", 0, 3, 2}, {"below", "0", "1", "1", 0, 3, 2},
             {"padded", "2 ", " 7", "04", 0, 3, 2}, {"first to 11", "2", "11", "x", 1, 11, 2},
             {"9 legs a set", "3", "9", "7", 2, 5, 7}});
    }
    void storedMatchValuesAreChecked()
    {
        startProgram();
        QFETCH(QString, format);
        QFETCH(QString, legs);
        QFETCH(QString, sets);
        saveSetting(QString::fromLatin1(matchFormatSetting), format);
        saveSetting(QString::fromLatin1(matchLegsSetting), legs);
        saveSetting(QString::fromLatin1(matchSetsSetting), sets);
        reopenProgram();
        QTEST(control<QComboBox>("cboMatchFormat")->currentIndex(), "index");
        QTEST(control<QSpinBox>("spnLegs")->value(), "legsShown");
        QTEST(control<QSpinBox>("spnSets")->value(), "setsShown");
    }

    // Reset Stats asks, then removes this player's games, game darts,
    // practice targets and practice darts and nothing else; the player stays,
    // and a second reset with nothing left to remove goes as well.
    void resetStatsRemovesOnlyThePlayersRows()
    {
        const QString me = QStringLiteral("It's me; DROP TABLE games");
        home_->addPlayers({QStringLiteral("Other"), me});
        {
            StatsStore seed(QStringLiteral("seed"));
            QVERIFY(seed.open(home_->dbPath));
            for (const qint64 player : {1, 2}) {
                const qint64 game = *seed.insertGame({player, GameType::X01_501, SkillLevel::BPlayer, QStringLiteral("Computer")});
                QVERIFY(seed.insertGameDart({game, player, 1, 0, 0, 118, 0, 20, 3, 20, 3}));
                const qint64 target = *seed.insertStatTarget(player, 20, 3);
                QVERIFY(seed.insertStatThrow({player, target, 0, 0, 118, 0, 20, 3}));
            }
        }
        whenDialogShows([](QWidget *dialog) {
            dialog->findChild<QComboBox *>(QStringLiteral("userDrop"))->setCurrentIndex(1);
            click(dialog, "OKButton");
        });
        program_ = std::make_unique<Program>(messages_, home_->dbPath, &sounds_);
        QVERIFY(program_->Main());
        // One row a player in each table, in this order.
        auto owners = [this] {
            return rows(QStringLiteral("SELECT players_id FROM games UNION ALL SELECT players_id FROM gamesdarts UNION ALL "
                                       "SELECT players_id FROM statstargets UNION ALL SELECT players_id FROM statsthrows"));
        };
        messages_.answers = {false};
        action("mnuOptionResetStats")->trigger();
        QCOMPARE(owners(), (QList<QVariantList>{{1}, {2}, {1}, {2}, {1}, {2}, {1}, {2}}));
        action("mnuOptionResetStats")->trigger();
        QCOMPARE(owners(), (QList<QVariantList>{{1}, {1}, {1}, {1}}));
        action("mnuOptionResetStats")->trigger();
        QCOMPARE(rows(QStringLiteral("SELECT count(*) FROM players"))[0][0].toInt(), 2);
        QCOMPARE(messages_.titles(), QStringList(5, QStringLiteral("Delete All Statistics?")));
        QCOMPARE(messages_.shown[0].text,
                 QStringLiteral("This action will permanently delete all the statistics collected\r\nfor ") + me
                     + QStringLiteral(" and cannot be undone.  Are you sure you want to do this?"));
        QCOMPARE(messages_.shown[2].text, QStringLiteral("All statistics deleted for ") + me);
    }

    // Entering play or review refreshes the player's own profile: "You" needs
    // 200 distinct distances, and review shows the factors.
    // (How the profile is worked out is checked in tst_skill_profile; the
    // widest band's cut at three times the average, the review's dart counts
    // and "You" chosen again at a start only here.)
    void modesShowTheYouProfile()
    {
        startProgram();
        StatsStore &store = program_->store();
        const qint64 target = *store.insertStatTarget(1, 20, 3);
        for (int d = 1; d <= 199; ++d)
            QVERIFY(store.insertStatThrow({1, target, 0, 0, 0, double(d), 0, 0}));
        action("mnuModeReview")->trigger();
        // Choosing the computer applies the rule with the count from entering play.
        auto chooseComputer = [this] { control<QRadioButton>("opOpponent_0")->click(); };
        action("mnuModePlay")->trigger();
        chooseComputer();
        QCOMPARE(text("Label53"), QStringLiteral("1 more samples needed."));
        QVERIFY(!control<QGroupBox>("fraYouNeedSamples")->isHidden() && !control<QRadioButton>("opSkill_3")->isEnabled());

        QVERIFY(store.insertStatThrow({1, target, 0, 0, 0, 808, 0, 0}));
        action("mnuModeReview")->trigger();
        // The far dart is wild and the widest band stops at three times the average.
        QCOMPARE(text("lblSkillRadii_3"), distanceText(3 * 20708.0 / 200, false));
        QCOMPARE(text("lblWildness"), QStringLiteral("0.005"));
        QCOMPARE(window()->reviewController()->counts()[2][1], 200);
        action("mnuModePlay")->trigger();
        chooseComputer();
        // "You" with enough darts is chosen again at the next start, with its
        // mood factor.
        control<QRadioButton>("opSkill_3")->click();
        restartProgram();
        QVERIFY(checked("opSkill_3") && control<QGroupBox>("fraMoodFactor")->isEnabled());
        QVERIFY(!control<QGroupBox>("fraMoodFactor")->isHidden());
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
