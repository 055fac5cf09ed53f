// Start-up, shutdown, modes and menus, driven through the real main window.

#include "../support/board_points.h"
#include "../support/fake_messages.h"
#include "../support/test_home.h"
#include "board/board_geometry.h"
#include "board/board_picture.h"
#include "dialogs/alert_box.h"
#include "review/review_controller.h"
#include "startup/darts_window.h"
#include "startup/program.h"
#include "startup/settings.h"
#include "sound/sounds.h"

#include <QAction>
#include <unistd.h>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace tavrix;

namespace {

// Runs `act` on the modal dialog once it is up.
template <typename Act>
void whenDialogShows(Act act)
{
    QTimer::singleShot(0, [act] {
        QTRY_VERIFY(QApplication::activeModalWidget());
        act(QApplication::activeModalWidget());
    });
}

void click(QWidget *dialog, const char *button)
{
    auto *b = dialog->findChild<QPushButton *>(QString::fromLatin1(button));
    QVERIFY2(b, button);
    b->click();
}

QAction *action(Darts *window, const char *name)
{
    return window->findChild<QAction *>(QString::fromLatin1(name));
}

template <typename T>
T *control(QWidget *window, const char *name)
{
    return findControl<T>(window, name);
}

// Runs `act`; a modal dialog it opens is closed at once and reported.
template <typename Act>
bool opensADialog(Act act)
{
    bool opened = false;
    QTimer::singleShot(0, [&opened] {
        if (QWidget *dialog = QApplication::activeModalWidget()) {
            opened = true;
            dialog->hide();
        }
    });
    act();
    QCoreApplication::processEvents();
    return opened;
}

int rowCount(StatsStore &store, const QString &sql)
{
    QSqlQuery query(store.connection());
    return query.exec(sql) && query.next() ? query.value(0).toInt() : -1;
}

} // namespace

class TestMainWindow : public QObject {
    Q_OBJECT

    std::unique_ptr<TestHome> home_;
    QString dbPath_;
    FakeMessages messages_;

    void seedPlayers(const QStringList &names) { home_->addPlayers(names); }

    void damageChart(const QStringList &statements)
    {
        StatsStore store(QStringLiteral("damage"));
        QVERIFY(store.open(dbPath_));
        QSqlQuery query(store.connection());
        for (const QString &statement : statements)
            QVERIFY2(query.exec(statement), qPrintable(statement));
    }

    // A program started with one player already in the database.
    std::unique_ptr<Program> started(const QString &player = QStringLiteral("Ann"))
    {
        seedPlayers({player});
        auto program = std::make_unique<Program>(messages_, dbPath_);
        if (!program->Main())
            return nullptr;
        return program;
    }

private slots:
    void init()
    {
        home_ = std::make_unique<TestHome>();
        dbPath_ = home_->dbPath;
        messages_ = FakeMessages{};
    }

    // First start: defaults written, database created, the first player
    // typed into the New Player dialog over the visible main window.
    void firstStartCreatesThePlayer()
    {
        const QString name = QStringLiteral(" O'Brien \"Bo\" ");
        Program program(messages_, dbPath_);
        bool windowWasVisible = false;
        whenDialogShows([&](QWidget *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("NewUserDialog"));
            windowWasVisible = program.window() && program.window()->isVisible();
            control<QLineEdit>(dialog, "NameText")->setText(name);
            click(dialog, "OKButton");
        });
        QVERIFY(program.Main());
        QVERIFY(windowWasVisible);
        QCOMPARE(getSetting(QStringLiteral("Units")), QStringLiteral("in"));
        QCOMPARE(program.session().currentPlayerName, name);
        QCOMPARE(program.store().playerIdByName(name), std::optional<qint64>(program.session().currentPlayerId));
        QCOMPARE(control<QLabel>(program.window(), "PlayerNameText")->text(),
                 QStringLiteral("Hey, ") + name + QStringLiteral("!"));
        QCOMPARE(control<QLabel>(program.window(), "Player2Text01")->text(), name);
        QCOMPARE(program.checkoutChart().routeText(170, true), QStringLiteral("T20, T20, D25"));
        QCOMPARE(program.window()->windowTitle(), QStringLiteral("Halvern Tavrix!"));
        QVERIFY(messages_.shown.isEmpty());
    }

    // Cancelling the first player ends the program quietly, database closed.
    void cancellingTheFirstPlayerEndsTheProgram()
    {
        Program program(messages_, dbPath_);
        whenDialogShows([](QWidget *dialog) { click(dialog, "Command1"); });
        QVERIFY(!program.Main());
        QCOMPARE(program.exitCode(), 0);
        QVERIFY(program.isShutDown());
        QVERIFY(!program.store().isOpen());
        QVERIFY(!program.window()->isVisible());
        QVERIFY(messages_.shown.isEmpty());
    }

    // Two players: the choice is made in Select Player; the first of the
    // table is offered first.
    void twoPlayersAreChosenFrom()
    {
        seedPlayers({QStringLiteral("Ann"), QStringLiteral("Bo Ström")});
        Program program(messages_, dbPath_);
        bool windowWasVisible = false;
        whenDialogShows([&](QWidget *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("UserSelectDialog"));
            windowWasVisible = program.window()->isVisible();
            auto *drop = control<QComboBox>(dialog, "userDrop");
            QCOMPARE(drop->currentText(), QStringLiteral("Ann"));
            drop->setCurrentIndex(1);
            click(dialog, "OKButton");
        });
        QVERIFY(program.Main());
        QVERIFY(windowWasVisible);
        QCOMPARE(program.session().currentPlayerName, QStringLiteral("Bo Ström"));
        QCOMPARE(program.session().currentPlayerId, qint64(2));
    }

    // Ids past 16 bits: 65,536 once read as 0 ("no player") and ended the
    // program at start; 40,000 recorded games under a negative id.
    void largePlayerIdsStartAndRecordTheirDarts_data()
    {
        QTest::addColumn<QList<qint64>>("ids");
        QTest::addColumn<int>("chosen");
        QTest::newRow("only player 65,536") << QList<qint64>{65536} << 0;
        QTest::newRow("40,000 of two") << QList<qint64>{40000, 65536} << 0;
        QTest::newRow("65,536 of two") << QList<qint64>{40000, 65536} << 1;
    }
    void largePlayerIdsStartAndRecordTheirDarts()
    {
        QFETCH(QList<qint64>, ids);
        QFETCH(int, chosen);
        {
            StatsStore seed(QStringLiteral("seed"));
            QVERIFY(seed.open(dbPath_));
            QSqlQuery insert(seed.connection());
            for (qint64 id : ids) {
                insert.prepare(QStringLiteral("INSERT INTO players (id, name) VALUES (?, ?)"));
                insert.addBindValue(id);
                insert.addBindValue(QStringLiteral("P%1").arg(id));
                QVERIFY(insert.exec());
            }
        }
        const qint64 id = ids[chosen];
        Program program(messages_, dbPath_);
        if (ids.size() > 1) {
            whenDialogShows([chosen](QWidget *dialog) {
                control<QComboBox>(dialog, "userDrop")->setCurrentIndex(chosen);
                click(dialog, "OKButton");
            });
        }
        QVERIFY(program.Main());
        QCOMPARE(program.session().currentPlayerId, id);
        Darts *window = program.window();
        QCOMPARE(control<QLabel>(window, "PlayerNameText")->text(), QStringLiteral("Hey, P%1!").arg(id));

        // Against a person at this board: both corks, then one set of ours.
        auto *board = control<BoardPicture>(window, "Picture1");
        auto *start = control<QPushButton>(window, "btnStartGame");
        auto throwAt = [board](const char *code) {
            QTest::mouseClick(board, Qt::LeftButton, {}, BoardPicture::pictureFromBoard(at(QLatin1String(code))).toPoint());
        };
        control<QRadioButton>(window, "opOpponent_1")->click();
        answerOpponentName(QStringLiteral("Bob"));
        QTest::mouseClick(start, Qt::LeftButton);
        for (const char *cork : {"S3", "B"}) {
            throwAt(cork);
            QTest::mouseClick(start, Qt::LeftButton);
        }
        QTest::mouseClick(start, Qt::LeftButton);
        for (const char *dart : {"T20", "T20", "S1"})
            throwAt(dart);
        QTest::mouseClick(start, Qt::LeftButton);

        const QString ofPlayer = QStringLiteral(" WHERE players_id = %1").arg(id);
        QCOMPARE(rowCount(program.store(), QStringLiteral("SELECT count(*) FROM gamesdarts")), 4);
        QCOMPARE(rowCount(program.store(), QStringLiteral("SELECT count(*) FROM gamesdarts") + ofPlayer), 4);
        QCOMPARE(rowCount(program.store(), QStringLiteral("SELECT count(*) FROM games") + ofPlayer), 1);
        QVERIFY(messages_.shown.isEmpty());
    }

    // The screen check comes before anything else; 800 x 600 is enough.
    void smallScreensAreRefused()
    {
        QVERIFY(screenIsLargeEnough({800, 600}));
        QVERIFY(!screenIsLargeEnough({799, 600}));
        QVERIFY(!screenIsLargeEnough({800, 599}));
        Program program(messages_, dbPath_);
        program.screenSize = [] { return QSize(1024, 599); };
        QVERIFY(!program.Main());
        QCOMPARE(messages_.titles(), QStringList{QStringLiteral("800 x 600 required")});
        QVERIFY(messages_.shown[0].text.startsWith(QStringLiteral("Sorry.\r\n\r\nTavrix! Requires")));
        QVERIFY(!program.window());
        QVERIFY(!QFile::exists(dbPath_));
        QVERIFY(!settingsStored());
    }

    // A database that cannot be opened is reported and ends the program.
    void unopenableDatabaseEndsTheProgram()
    {
        Program program(messages_, home_->dir.filePath(QStringLiteral("missing/tavrix.db")));
        QVERIFY(!program.Main());
        QCOMPARE(program.exitCode(), 1);
        QCOMPARE(messages_.shown.size(), 1);
        QCOMPARE(messages_.shown[0].kind, QStringLiteral("error"));
        QVERIFY(messages_.shown[0].text.contains(QStringLiteral("missing")));
    }

    // A database of another program is refused and left byte for byte as
    // it was: no journal mode switched, no table added.
    void aForeignDatabaseIsLeftAlone()
    {
        {
            QSqlDatabase foreign = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("foreign"));
            foreign.setDatabaseName(dbPath_);
            QVERIFY(foreign.open());
            QVERIFY(QSqlQuery(foreign).exec(QStringLiteral("CREATE TABLE recipes (name TEXT)")));
            foreign.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("foreign"));
        QFile file(dbPath_);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray before = file.readAll();
        file.close();

        Program program(messages_, dbPath_);
        QVERIFY(!program.Main());
        QCOMPARE(messages_.shown.size(), 1);
        QVERIFY(messages_.shown[0].text.contains(QDir::toNativeSeparators(dbPath_)));
        QVERIFY(messages_.shown[0].text.contains(QStringLiteral("tables of another program")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), before);
        QVERIFY(!QFile::exists(dbPath_ + QStringLiteral("-wal")));
    }

    // A read-only file or folder is named at start, with the cause in plain
    // words. Root may write anything, so CI also runs this as "nobody".
    void readOnlyPlacesAreNamed()
    {
        if (geteuid() == 0)
            QSKIP("root writes read-only files; the folder_read_only test runs this as nobody");
        seedPlayers({QStringLiteral("Ann")});
        QVERIFY(QFile::setPermissions(dbPath_, QFile::ReadOwner));
        {
            Program program(messages_, dbPath_);
            QVERIFY(!program.Main());
            QCOMPARE(messages_.shown.size(), 1);
            QVERIFY2(messages_.shown[0].text.endsWith(QStringLiteral(": the file is read-only")),
                     qPrintable(messages_.shown[0].text));
            QVERIFY(messages_.shown[0].text.contains(QDir::toNativeSeparators(dbPath_)));
        }
        QVERIFY(QFile::setPermissions(dbPath_, QFile::ReadOwner | QFile::WriteOwner));
        const QString folder = home_->dir.path();
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        messages_ = FakeMessages{};
        {
            Program program(messages_, dbPath_);
            QVERIFY(!program.Main());
            QCOMPARE(messages_.shown.size(), 1);
            QVERIFY2(messages_.shown[0].text.contains(
                         QStringLiteral("the folder %1 is read-only").arg(QDir::toNativeSeparators(folder))),
                     qPrintable(messages_.shown[0].text));
        }
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    // A file held by another program is reported at start, naming it; the
    // program still starts.
    void aFileInUseIsReportedAtStart()
    {
        seedPlayers({QStringLiteral("Ann")});
        QSqlDatabase other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("holder"));
        other.setDatabaseName(dbPath_);
        QVERIFY(other.open());
        QSqlQuery hold(other);
        QVERIFY(hold.exec(QStringLiteral("BEGIN EXCLUSIVE")));
        {
            Program program(messages_, dbPath_);
            QVERIFY(program.Main());
            QCOMPARE(messages_.shown.size(), 1);
            QVERIFY(messages_.shown[0].text.contains(QDir::toNativeSeparators(dbPath_)));
            QVERIFY(messages_.shown[0].text.contains(QStringLiteral("in use by another program")));
        }
        hold.exec(QStringLiteral("ROLLBACK"));
        hold = QSqlQuery();
        other.close();
        other = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("holder"));
    }

    void damagedChartIsMendedAndSaidOnce_data()
    {
        QTest::addColumn<QStringList>("statements");
        QTest::addColumn<QString>("notice");
        QTest::newRow("whole") << QStringList() << QString();
        QTest::newRow("garbage, a missing row, a wrong sum")
            << QStringList{QStringLiteral("UPDATE outchart SET singleout = 'x', doubleout = 'T20,,'"
                                          " WHERE points IN (20, 99)"),
                           QStringLiteral("DELETE FROM outchart WHERE points = 57"),
                           QStringLiteral("UPDATE outchart SET doubleout = 'T20,D10' WHERE points = 100")}
            << QStringLiteral("was damaged: 4 rows were replaced by the chart that comes with Tavrix.");
        QTest::newRow("a missing row, a score twice")
            << QStringList{QStringLiteral("DELETE FROM outchart WHERE points = 57"),
                           QStringLiteral("INSERT INTO outchart VALUES (61, 'S1', '')")}
            << QStringLiteral("was damaged: 1 row was replaced by the chart that comes with Tavrix, "
                              "and 1 row that belongs to no score or repeats one was removed.");
    }

    // A damaged checkout chart is mended in the database at start-up and
    // the user told once; the next start finds it whole and says nothing.
    void damagedChartIsMendedAndSaidOnce()
    {
        QFETCH(QStringList, statements);
        QFETCH(QString, notice);
        seedPlayers({QStringLiteral("Ann")});
        damageChart(statements);
        {
            Program program(messages_, dbPath_);
            QVERIFY(program.Main());
            if (notice.isEmpty()) {
                QVERIFY(messages_.shown.isEmpty());
            } else {
                QCOMPARE(messages_.shown.size(), 1);
                QCOMPARE(messages_.shown[0].kind, QStringLiteral("notice"));
                QCOMPARE(messages_.shown[0].title, QStringLiteral("Tavrix!"));
                QCOMPARE(messages_.shown[0].text, QStringLiteral("The checkout chart in ")
                                                      + QDir::toNativeSeparators(dbPath_) + u' '
                                                      + notice);
            }
            QCOMPARE(program.checkoutChart().routeText(100, true), QStringLiteral("T20, D20"));
            QCOMPARE(program.checkoutChart().routeText(57, true), QStringLiteral("S17, D20"));
            QCOMPARE(*program.store().outchartRows(), bundledChartRows());
        }
        messages_ = FakeMessages{};
        Program again(messages_, dbPath_);
        QVERIFY(again.Main());
        QVERIFY(messages_.shown.isEmpty());
    }

    // When the mended chart cannot be written the program plays by the
    // bundled rows anyway, and says so at every start.
    void unsavedChartRepairIsSaid()
    {
        seedPlayers({QStringLiteral("Ann")});
        damageChart({QStringLiteral("UPDATE outchart SET doubleout = 'x' WHERE points = 100"),
                     QStringLiteral("CREATE TRIGGER readonly BEFORE DELETE ON outchart"
                                    " BEGIN SELECT RAISE(ABORT, 'attempt to write a readonly database'); END")});
        Program program(messages_, dbPath_);
        QVERIFY(program.Main());
        QCOMPARE(messages_.titles(), QStringList{QStringLiteral("Tavrix!")});
        const QString text = messages_.shown[0].text;
        QVERIFY2(text.startsWith(QStringLiteral("The checkout chart in ") + QDir::toNativeSeparators(dbPath_)
                                 + QStringLiteral(" is damaged, and the repair cannot be saved (")),
                 qPrintable(text));
        QVERIFY2(text.contains(QStringLiteral("readonly")), qPrintable(text));
        QVERIFY2(text.endsWith(QStringLiteral("Tavrix uses the chart that comes with it in place of the damaged rows.")),
                 qPrintable(text));
        QCOMPARE(program.checkoutChart().routeText(100, true), QStringLiteral("T20, D20"));
    }

    // The Mode menu: current entry checked and disabled; leaving a running
    // game asks first and No keeps everything.
    void modesSwitchAndAskBeforeQuittingAGame()
    {
        auto program = started();
        QVERIFY(program);
        Darts *window = program->window();
        auto *board = control<BoardPicture>(window, "Picture1");
        QCOMPARE(board->size(), QSize(520, 520));
        QVERIFY(!board->isEnabled());
        QVERIFY(action(window, "mnuModePlay")->isChecked());
        QVERIFY(!action(window, "mnuModePlay")->isEnabled());

        // A game against the computer has started: its cork is awaited.
        QTest::mouseClick(control<QPushButton>(window, "btnStartGame"), Qt::LeftButton);
        QCOMPARE(control<QPushButton>(window, "btnStartGame")->text(), QStringLiteral("Confirm Dart"));
        messages_.answers = {false};
        action(window, "mnuModePractice")->trigger();
        QCOMPARE(messages_.titles(), QStringList{QStringLiteral("Quit Game?")});
        QCOMPARE(window->currentMode(), Mode::Play);
        QCOMPARE(control<QPushButton>(window, "btnStartGame")->text(), QStringLiteral("Confirm Dart"));
        QVERIFY(!action(window, "mnuModePractice")->isChecked());
        QVERIFY(action(window, "mnuModePlay")->isChecked());

        messages_.answers = {true};
        action(window, "mnuModePractice")->trigger();
        QCOMPARE(window->currentMode(), Mode::Practice);
        QVERIFY(control<QGroupBox>(window, "practiceModeFrame")->isVisible());
        QVERIFY(!control<QGroupBox>(window, "PlayModeFrame")->isVisible());
        QCOMPARE(control<QLabel>(window, "GeneralText")->text(), QStringLiteral("Click \"Go\" to begin"));
        QVERIFY(!action(window, "mnuModePractice")->isEnabled());
        QVERIFY(action(window, "mnuModePlay")->isEnabled());

        // No game runs outside play mode: no more questions.
        action(window, "mnuModeReview")->trigger();
        QCOMPARE(messages_.shown.size(), 2);
        QVERIFY(board->isEnabled());
        QVERIFY(control<QGroupBox>(window, "ReviewModeFrame")->isVisible());

        action(window, "mnuModePlay")->trigger();
        QCOMPARE(window->currentMode(), Mode::Play);
        QVERIFY(!board->isEnabled());
        QCOMPARE(control<QPushButton>(window, "btnStartGame")->text(), QStringLiteral("Start Game"));
    }

    // The unit and the sound choice are stored at once and read back by the
    // next start.
    void unitAndSoundChoicesSurviveARestart()
    {
        {
            auto program = started();
            QVERIFY(!program->session().useCms);
            action(program->window(), "mnuOptionsUseCms")->trigger();
            QVERIFY(program->session().useCms);
            QVERIFY(!action(program->window(), "mnuOptionsUseInches")->isChecked());
            QCOMPARE(getSetting(QStringLiteral("Units")), QStringLiteral("cm"));
            QVERIFY(action(program->window(), "mnuOptionsSound")->isChecked());
            action(program->window(), "mnuOptionsSound")->trigger();
            QVERIFY(!program->sounds().isEnabled());
        }
        Program again(messages_, dbPath_);
        QVERIFY(again.Main());
        QVERIFY(again.session().useCms);
        QVERIFY(!again.sounds().isEnabled());
        QVERIFY(!action(again.window(), "mnuOptionsSound")->isChecked());
        QVERIFY(action(again.window(), "mnuOptionsUseCms")->isChecked());
        QVERIFY(!action(again.window(), "mnuOptionsUseInches")->isChecked());
    }

    // A running game is not lost by a player dialog or by closing the
    // window: each asks first, and No keeps the game and the window. Without
    // a game nothing asks.
    void aRunningGameIsProtected()
    {
        auto program = started();
        Darts *window = program->window();
        auto *start = control<QPushButton>(window, "btnStartGame");
        QTest::mouseClick(start, Qt::LeftButton);
        QCOMPARE(start->text(), QStringLiteral("Confirm Dart"));
        const QStringList entries{QStringLiteral("mnuOptionsChangePlayer"),
                                  QStringLiteral("mnuOptionsEditPlayers"), QStringLiteral("mnuExit")};
        for (const QString &entry : entries) {
            messages_.answers = {false};
            QVERIFY(!opensADialog([&] { action(window, qPrintable(entry))->trigger(); }));
        }
        messages_.answers = {false};
        QVERIFY(!window->close());
        QCOMPARE(messages_.titles(), QStringList(4, QStringLiteral("Quit Game?")));
        QCOMPARE(messages_.shown[0].text, QStringLiteral("Quit game in progress?"));
        QVERIFY(window->isVisible());
        QVERIFY(!program->isShutDown());
        QCOMPARE(start->text(), QStringLiteral("Confirm Dart"));
        QVERIFY(control<BoardPicture>(window, "Picture1")->isEnabled());

        // Yes goes on as before: the dialog opens, and closing shuts down.
        messages_.answers = {true};
        QVERIFY(opensADialog([&] { action(window, "mnuOptionsEditPlayers")->trigger(); }));
        messages_.answers = {true};
        QVERIFY(window->close());
        QVERIFY(program->isShutDown());
        QVERIFY(!program->store().isOpen());
        QCOMPARE(messages_.shown.size(), 6);
    }

    // Alt and a letter open the menus, whose titles stay as they are.
    void menusOpenFromTheKeyboard()
    {
        auto program = started();
        Darts *window = program->window();
        window->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), window);
        const std::pair<const char *, Qt::Key> menus[] = {
            {"mnuFile", Qt::Key_F}, {"mnuMode", Qt::Key_M}, {"mnuOptions", Qt::Key_O}, {"mnuHelp", Qt::Key_H}};
        QStringList titles;
        for (const auto &[name, key] : menus) {
            auto *menu = window->findChild<QMenu *>(QString::fromLatin1(name));
            QTest::keyClick(window, key, Qt::AltModifier);
            QTRY_VERIFY2(menu->isVisible(), name);
            menu->close();
            QTRY_COMPARE(QApplication::activeWindow(), window);
            titles.append(menu->title());
        }
        QCOMPARE(titles, (QStringList{"File", "Mode", "Options", "Help"}));
    }

    // The play set-up chosen last is chosen again at the next start, through
    // the same handlers as a click; "You" only when it can be played.
    void gameChoicesSurviveARestart()
    {
        seedPlayers({QStringLiteral("Ann")});
        auto checked = [](Darts *window, const char *name) {
            return control<QAbstractButton>(window, name)->isChecked();
        };
        {
            Program program(messages_, dbPath_);
            QVERIFY(program.Main());
            Darts *window = program.window();
            for (const char *choice : {"opGame_0", "opSkill_2", "opCricketOptions_0", "chkKeepCricketStats",
                                       "opOpponent_1"})
                QTest::mouseClick(control<QAbstractButton>(window, choice), Qt::LeftButton, {}, QPoint(6, 6));
            QVERIFY(!checked(window, "chkKeep01stats"));
        }
        {
            Program program(messages_, dbPath_);
            QVERIFY(program.Main());
            Darts *window = program.window();
            for (const char *name : {"opGame_0", "opSkill_2", "opCricketOptions_0", "opOpponent_1"})
                QVERIFY2(checked(window, name), name);
            QVERIFY(!checked(window, "chkKeepCricketStats") && !checked(window, "chkKeep01stats"));
            QVERIFY(!control<QGroupBox>(window, "fraCricketOptions")->isHidden());
            QVERIFY(control<QGroupBox>(window, "fra01Options")->isHidden());
            QVERIFY(!control<QAbstractButton>(window, "opSkill_2")->isEnabled());
            // A person as opponent asks for the name only at "Start Game".
            QVERIFY(!QApplication::activeModalWidget());
            QVERIFY(messages_.shown.isEmpty());
        }

        // "You" without enough darts keeps "B-Player"; 301 checks Double In.
        saveSetting(QStringLiteral("Game"), QStringLiteral("2"));
        saveSetting(QStringLiteral("Skill"), QStringLiteral("4"));
        saveSetting(QStringLiteral("Opponent"), QStringLiteral("1"));
        {
            Program program(messages_, dbPath_);
            QVERIFY(program.Main());
            Darts *window = program.window();
            QVERIFY(checked(window, "opGame_1") && checked(window, "chkDoubleIn"));
            QVERIFY(checked(window, "opSkill_0"));
            const qint64 target = *program.store().insertStatTarget(1, 20, 3);
            for (int d = 1; d <= 200; ++d)
                QVERIFY(program.store().insertStatThrow({1, target, 0, 0, 0, double(d), 0, 0}));
        }
        Program program(messages_, dbPath_);
        QVERIFY(program.Main());
        QVERIFY(checked(program.window(), "opSkill_3"));
        QVERIFY(!control<QGroupBox>(program.window(), "fraMoodFactor")->isHidden());
    }

    // Exit and closing the window shut down once: a database opened again
    // after the shutdown is not closed by a second one.
    void shutdownRunsOnce()
    {
        auto program = started();
        action(program->window(), "mnuExit")->trigger();
        QVERIFY(messages_.shown.isEmpty());
        QVERIFY(program->isShutDown());
        QVERIFY(!program->store().isOpen());
        QVERIFY(!program->window()->isVisible());
        QVERIFY(program->store().open(dbPath_));
        program->window()->show();
        program->window()->close();
        QVERIFY(program->store().isOpen());
    }

    // Reset Stats asks, then removes this player's statistics and nothing
    // else; the player stays.
    void resetStatsRemovesExactlyThePlayersRows()
    {
        const QString me = QStringLiteral("It's me; DROP TABLE games");
        {
            StatsStore seed(QStringLiteral("seed"));
            QVERIFY(seed.open(dbPath_));
            for (const QString &name : {QStringLiteral("Other"), me}) {
                const qint64 player = *seed.insertPlayer(name);
                const qint64 game = *seed.insertGame({player, GameType::X01_501, SkillLevel::BPlayer, QStringLiteral("Computer")});
                QVERIFY(seed.insertGameDart({game, player, 1, 0, 0, 118, 0, 20, 3, 20, 3}));
                const qint64 target = *seed.insertStatTarget(player, 20, 3);
                QVERIFY(seed.insertStatThrow({player, target, 0, 0, 118, 0, 20, 3}));
            }
        }
        Program program(messages_, dbPath_);
        whenDialogShows([](QWidget *dialog) {
            control<QComboBox>(dialog, "userDrop")->setCurrentIndex(1);
            click(dialog, "OKButton");
        });
        QVERIFY(program.Main());
        QCOMPARE(program.session().currentPlayerName, me);
        auto count = [&](const char *table) {
            return rowCount(program.store(),
                            QStringLiteral("SELECT count(*) FROM %1").arg(QLatin1String(table)));
        };
        const char *tables[] = {"games", "gamesdarts", "statstargets", "statsthrows"};

        messages_.answers = {false};
        action(program.window(), "mnuOptionResetStats")->trigger();
        for (const char *table : tables)
            QCOMPARE(count(table), 2);

        action(program.window(), "mnuOptionResetStats")->trigger();
        for (const char *table : tables)
            QCOMPARE(count(table), 1);
        QCOMPARE(count("players"), 2);
        QCOMPARE(rowCount(program.store(), QStringLiteral("SELECT count(*) FROM games WHERE players_id = 1")), 1);
        QCOMPARE(messages_.shown.size(), 3);
        QCOMPARE(messages_.shown[0].title, QStringLiteral("Delete All Statistics?"));
        QCOMPARE(messages_.shown[0].text,
                 QStringLiteral("This action will permanently delete all the statistics collected\r\nfor ")
                     + me + QStringLiteral(" and cannot be undone.  Are you sure you want to do this?"));
        QCOMPARE(messages_.shown[2].text, QStringLiteral("All statistics deleted for ") + me);
    }

    // Entering play or review refreshes the player's own profile: "You" needs
    // 200 distinct distances, and review shows either the factors or the note.
    void modesShowTheYouProfile()
    {
        auto program = started();
        QVERIFY(program);
        StatsStore &store = program->store();
        const qint64 target = *store.insertStatTarget(1, 20, 3);
        for (int d = 1; d <= 199; ++d)
            QVERIFY(store.insertStatThrow({1, target, 0, 0, 0, double(d), 0, 0}));
        Darts *window = program->window();
        action(window, "mnuModeReview")->trigger();
        QCOMPARE(control<QLabel>(window, "lblNsamp")->text(), QStringLiteral("(199 samples)"));
        QVERIFY(!control<QGroupBox>(window, "fraLowSamples")->isHidden());
        QVERIFY(!control<QLabel>(window, "lblWildness")->isVisibleTo(window));
        // Choosing the computer applies the rule with the count from entering play.
        auto chooseComputer = [window] { control<QRadioButton>(window, "opOpponent_0")->click(); };
        action(window, "mnuModePlay")->trigger();
        chooseComputer();
        QCOMPARE(control<QLabel>(window, "Label53")->text(), QStringLiteral("1 more samples needed."));
        QVERIFY(!control<QGroupBox>(window, "fraYouNeedSamples")->isHidden());
        QVERIFY(!control<QRadioButton>(window, "opSkill_3")->isEnabled());

        QVERIFY(store.insertStatThrow({1, target, 0, 0, 0, 808, 0, 0}));
        action(window, "mnuModeReview")->trigger();
        QVERIFY(control<QGroupBox>(window, "fraLowSamples")->isHidden());
        QCOMPARE(control<QLabel>(window, "lblSkillRadii_0")->text(), distanceText(50, false));
        // The far dart is wild and the widest band stops at three times the average.
        QCOMPARE(control<QLabel>(window, "lblSkillRadii_3")->text(), distanceText(3 * 20708.0 / 200, false));
        QCOMPARE(control<QLabel>(window, "lblWildness")->text(), QStringLiteral("0.005"));
        QCOMPARE(program->window()->reviewController()->counts()[2][1], 200);
        action(window, "mnuModePlay")->trigger();
        chooseComputer();
        QVERIFY(control<QGroupBox>(window, "fraYouNeedSamples")->isHidden());
        QVERIFY(control<QRadioButton>(window, "opSkill_3")->isEnabled());

        // The mood factor shows for "You" against the computer only.
        auto *mood = control<QGroupBox>(window, "fraMoodFactor");
        control<QRadioButton>(window, "opSkill_3")->click();
        QVERIFY(!mood->isHidden() && mood->isEnabled());
        control<QRadioButton>(window, "opOpponent_1")->click();
        QVERIFY(mood->isHidden());
        QVERIFY(!control<QRadioButton>(window, "opSkill_0")->isEnabled());
        chooseComputer();
        QVERIFY(!mood->isHidden());
        control<QRadioButton>(window, "opSkill_0")->click();
        QVERIFY(mood->isHidden() && !mood->isEnabled());
    }

    // The alert box shows the newest texts and returns however it is hidden.
    void alertBoxIsReusedAndCanBeHiddenFromOutside()
    {
        auto program = started();
        MyAlertBox *box = program->window()->alertBox();
        whenDialogShows([](QWidget *dialog) { click(dialog, "OKButton"); });
        box->alert(QStringLiteral("You won!"), QStringLiteral("Good Game!"));
        whenDialogShows([box](QWidget *dialog) {
            QCOMPARE(dialog, box);
            QCOMPARE(box->windowTitle(), QStringLiteral("Busted"));
            QCOMPARE(control<QLabel>(box, "Label1")->text(), QStringLiteral("Too many."));
            box->hide();
        });
        box->alert(QStringLiteral("Too many."), QStringLiteral("Busted"));
        QVERIFY(!box->isVisible());
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
