// The About box and its system facts, opened from the program's Help menu.

#include "../support/program_test.h"
#include "ui/help/about_dialog.h"
#include "ui/help/sys_info_dialog.h"

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
    auto *b = dialog->findChild<QPushButton *>(QString::fromLatin1(button));
    b ? b->click() : dialog->hide();
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

// One line of the system facts, as this home should show it.
using Fact = std::function<QString(const TestHome &)>;

} // namespace

Q_DECLARE_METATYPE(Fact)

class TestAbout : public ProgramTest {
    Q_OBJECT

    struct Shown {
        QStringList names; // the box's title and labels
        QString facts, copied;
    };
    // Opens the About box from the Help menu, then its system facts, copies them and closes both.
    Shown openAboutBox()
    {
        Shown shown;
        whenDialogShows([&](QWidget *box) {
            shown.names = {box->windowTitle(), findControl<QLabel>(box, "lblTitle")->text(),
                           findControl<QLabel>(box, "lblVersion")->text(),
                           findControl<QLabel>(box, "lblLicense")->text()};
            whenDialogShows([&](QWidget *dialog) {
                if (auto *text = dialog->findChild<QPlainTextEdit *>(QStringLiteral("txtSysInfo")))
                    shown.facts = text->toPlainText();
                QGuiApplication::clipboard()->clear();
                clickOrHide(dialog, "cmdCopy");
                shown.copied = QGuiApplication::clipboard()->text();
                clickOrHide(dialog, "cmdClose");
            });
            clickOrHide(box, "cmdSysInfo");
            clickOrHide(box, "cmdOK");
        });
        action("mnuHelpAbout")->trigger();
        return shown;
    }

private slots:
    void cleanup() { program_.reset(); }

    // The box names the program, the version CMake was given and the
    // licence, and copies the facts it shows whole.
    void aboutBoxShowsVersionAndLicenceAndCopiesTheFacts()
    {
        startProgram();
        const Shown shown = openAboutBox();
        QCOMPARE(shown.names,
                 (QStringList{"About Tavrix!", "Tavrix!", "Version " TAVRIX_PROJECT_VERSION,
                              "Licensed under the GNU General Public License, version 3 or later.\n"
                              "Tavrix comes with ABSOLUTELY NO WARRANTY."}));
        QVERIFY(!shown.facts.isEmpty() && shown.copied == shown.facts && messages_.shown.isEmpty());
    }

    // The facts a bug report needs are those of this home.
    void systemFactsDescribeThisHome_data()
    {
        QTest::addColumn<Fact>("fact");
        QTest::newRow("version") << Fact([](const TestHome &) {
            return QStringLiteral("Version: " TAVRIX_PROJECT_VERSION "\n");
        });
        QTest::newRow("database") << Fact([](const TestHome &home) {
            return QStringLiteral("Database: ") + QFileInfo(home.dbPath).absoluteFilePath() + '\n';
        });
        QTest::newRow("database size") << Fact([](const TestHome &home) {
            return QStringLiteral("Database size: %1 bytes\n").arg(QFileInfo(home.dbPath).size());
        });
        // The store keeps a write-ahead log, where the newest rows wait.
        QTest::newRow("database log") << Fact([](const TestHome &home) {
            return QStringLiteral("Database log: %1 bytes\n").arg(QFileInfo(home.dbPath + QStringLiteral("-wal")).size());
        });
        // The settings live in the test's home, where TestHome put them.
        QTest::newRow("settings") << Fact([](const TestHome &home) {
            return QStringLiteral("Settings: ") + home.dir.path() + '/';
        });
    }
    void systemFactsDescribeThisHome()
    {
        QFETCH(Fact, fact);
        startProgram();
        const QString facts = openAboutBox().facts;
        QVERIFY2(facts.contains(fact(*home_)), qPrintable(facts));
    }

    // Facts that cannot be gathered, by a failure or because none is known,
    // are said to be unavailable instead of showing an empty list.
    void missingFactsAreSaidToBeUnavailable_data()
    {
        QTest::addColumn<bool>("throws");
        QTest::newRow("gathering fails") << true;
        QTest::newRow("nothing known") << false;
    }
    void missingFactsAreSaidToBeUnavailable()
    {
        QFETCH(bool, throws);
        FakeMessages messages;
        AboutDialog box(messages, [throws]() -> SystemFacts {
            if (throws)
                throw std::runtime_error("no facts");
            return {};
        });
        QWidget *opened = nullptr;
        QTimer::singleShot(0, [&] { if ((opened = QApplication::activeModalWidget())) opened->hide(); });
        findControl<QPushButton>(&box, "cmdSysInfo")->click();
        QCoreApplication::processEvents();
        QVERIFY(!opened);
        QCOMPARE(messages.texts(QStringLiteral("notice")),
                 QStringList{QStringLiteral("System Information Is Unavailable At This Time")});
    }

    // A database file that is not there has no size, rather than 0 bytes, and no log.
    void aMissingDatabaseHasNoSize()
    {
        const QString text =
            systemInfoText(gatherSystemFacts(QStringLiteral("/nonexistent/tavrix.db"), {}));
        QVERIFY(text.contains(QStringLiteral("Database size: no such file\n")) && !text.contains(QStringLiteral("Database log")));
        QVERIFY(text.contains(QStringLiteral("Settings: unknown\n")));
    }
};

QTEST_MAIN(TestAbout)
#include "tst_about.moc"
