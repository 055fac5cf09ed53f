// The About box and its system facts, opened from the program's Help menu.

#include "../support/program_test.h"
#include "dialogs/about_dialog.h"
#include "dialogs/sys_info_dialog.h"

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

#include <stdexcept>

using namespace tavrix;

namespace {

// Clicks a button of the dialog; a dialog without it is hidden instead, so
// that a missing button fails the test rather than leaving it waiting.
void clickOrHide(QWidget *dialog, const char *button)
{
    if (auto *b = dialog->findChild<QPushButton *>(QString::fromLatin1(button)))
        b->click();
    else
        dialog->hide();
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

} // namespace

class TestAbout : public ProgramTest {
    Q_OBJECT

private slots:
    void cleanup() { program_.reset(); }

    // The box names the program and the version CMake was given, shows the
    // facts of this home, copies them whole, and is gone after OK.
    void aboutBoxShowsVersionAndSystemFacts()
    {
        startProgram();
        QString caption, title, version, sysInfoCaption, facts, copied;
        bool hasPicture = false, readOnly = false;
        whenDialogShows([&](QWidget *box) {
            caption = box->windowTitle();
            title = findControl<QLabel>(box, "lblTitle")->text();
            version = findControl<QLabel>(box, "lblVersion")->text();
            hasPicture = !findControl<QLabel>(box, "Image1")->pixmap().isNull();
            sysInfoCaption = findControl<QPushButton>(box, "cmdSysInfo")->text();
            whenDialogShows([&](QWidget *dialog) {
                if (auto *text = dialog->findChild<QPlainTextEdit *>(QStringLiteral("txtSysInfo"))) {
                    facts = text->toPlainText();
                    readOnly = text->isReadOnly();
                }
                QGuiApplication::clipboard()->clear();
                clickOrHide(dialog, "cmdCopy");
                copied = QGuiApplication::clipboard()->text();
                clickOrHide(dialog, "cmdClose");
            });
            clickOrHide(box, "cmdSysInfo");
            clickOrHide(box, "cmdOK");
        });
        action("mnuHelpAbout")->trigger();

        QCOMPARE(caption, QStringLiteral("About Tavrix!"));
        QCOMPARE(title, QStringLiteral("Tavrix!"));
        QCOMPARE(version, QStringLiteral("Version " TAVRIX_PROJECT_VERSION));
        QVERIFY(hasPicture);
        QCOMPARE(sysInfoCaption, QStringLiteral("&System Info..."));

        const QFileInfo database(home_->dbPath);
        QVERIFY(facts.contains(QStringLiteral("Version: " TAVRIX_PROJECT_VERSION "\n")));
        QVERIFY(facts.contains(QStringLiteral("Database: ") + database.absoluteFilePath() + '\n'));
        QVERIFY(facts.contains(QStringLiteral("Database size: %1 bytes\n").arg(database.size())));
        // The store keeps a write-ahead log, where the newest rows wait.
        const QFileInfo log(home_->dbPath + QStringLiteral("-wal"));
        QVERIFY(log.isFile());
        QVERIFY(facts.contains(QStringLiteral("Database log: %1 bytes\n").arg(log.size())));
        QVERIFY(facts.contains(QStringLiteral("Qt: %1 (built with %2)\n").arg(QString::fromLatin1(qVersion()), QStringLiteral(QT_VERSION_STR))));
        // The settings live in the test's home, where TestHome put them.
        QVERIFY(facts.contains(QStringLiteral("Settings: ") + home_->dir.path() + '/'));
        QVERIFY(readOnly);
        QCOMPARE(copied, facts);
        QVERIFY(messages_.shown.isEmpty());
        // Nothing of either box is kept for the next showing.
        QVERIFY(!window()->findChild<AboutDialog *>());
        QVERIFY(!window()->findChild<SysInfoDialog *>());
    }

    // Facts that cannot be gathered, by a failure or because none is known,
    // are said to be unavailable instead of showing an empty list.
    void unavailableFactsAreSaid()
    {
        const std::function<SystemFacts()> failures[] = {
            [] () -> SystemFacts { throw std::runtime_error("no facts"); },
            [] { return SystemFacts{}; },
        };
        for (const auto &gather : failures) {
            FakeMessages messages;
            AboutDialog box(messages, gather);
            bool dialogOpened = false;
            QTimer::singleShot(0, [&] {
                if (QWidget *dialog = QApplication::activeModalWidget()) {
                    dialogOpened = true;
                    dialog->hide();
                }
            });
            findControl<QPushButton>(&box, "cmdSysInfo")->click();
            QCoreApplication::processEvents();
            QVERIFY(!dialogOpened);
            QCOMPARE(messages.texts(QStringLiteral("notice")),
                     QStringList{QStringLiteral("System Information Is Unavailable At This Time")});
        }
    }

    // A database file that is not there has no size, rather than 0 bytes.
    void missingDatabaseHasNoSize()
    {
        const SystemFacts facts = gatherSystemFacts(QStringLiteral("/nonexistent/tavrix.db"), {});
        const QString text = systemInfoText(facts);
        QVERIFY(text.contains(QStringLiteral("Database size: no such file\n")));
        QVERIFY(!text.contains(QStringLiteral("Database log")));
        QVERIFY(text.contains(QStringLiteral("Settings: unknown\n")));
    }
};

QTEST_MAIN(TestAbout)
#include "tst_about.moc"
