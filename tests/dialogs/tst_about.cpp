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

} // namespace

class TestAbout : public ProgramTest {
    Q_OBJECT

private slots:
    void cleanup() { program_.reset(); }

    // The box names the program and the version CMake was given, shows the
    // facts of this home and copies them whole.
    void aboutBoxShowsVersionAndSystemFactsOrSaysTheyAreMissing()
    {
        startProgram();
        QStringList names;
        QString facts, copied;
        whenDialogShows([&](QWidget *box) {
            names = {box->windowTitle(), findControl<QLabel>(box, "lblTitle")->text(),
                     findControl<QLabel>(box, "lblVersion")->text()};
            whenDialogShows([&](QWidget *dialog) {
                if (auto *text = dialog->findChild<QPlainTextEdit *>(QStringLiteral("txtSysInfo")))
                    facts = text->toPlainText();
                QGuiApplication::clipboard()->clear();
                clickOrHide(dialog, "cmdCopy");
                copied = QGuiApplication::clipboard()->text();
                clickOrHide(dialog, "cmdClose");
            });
            clickOrHide(box, "cmdSysInfo");
            clickOrHide(box, "cmdOK");
        });
        action("mnuHelpAbout")->trigger();

        QCOMPARE(names, (QStringList{"About Tavrix!", "Tavrix!", "Version " TAVRIX_PROJECT_VERSION}));

        const QFileInfo database(home_->dbPath);
        // The store keeps a write-ahead log, where the newest rows wait; the
        // settings live in the test's home, where TestHome put them.
        const QFileInfo log(home_->dbPath + QStringLiteral("-wal"));
        for (const QString &fact : {QStringLiteral("Version: " TAVRIX_PROJECT_VERSION "\n"),
                                    QStringLiteral("Database: ") + database.absoluteFilePath() + '\n',
                                    QStringLiteral("Database size: %1 bytes\n").arg(database.size()),
                                    QStringLiteral("Database log: %1 bytes\n").arg(log.size()),
                                    QStringLiteral("Settings: ") + home_->dir.path() + '/'})
            QVERIFY2(facts.contains(fact), qPrintable(fact));
        QVERIFY(copied == facts && messages_.shown.isEmpty());

        // Facts that cannot be gathered, by a failure or because none is
        // known, are said to be unavailable instead of showing an empty list.
        // A database file that is not there has no size, rather than 0 bytes.
        const std::function<SystemFacts()> failures[] = {
            [] () -> SystemFacts { throw std::runtime_error("no facts"); },
            [] { return SystemFacts{}; },
        };
        for (const auto &gather : failures) {
            FakeMessages messages;
            AboutDialog box(messages, gather);
            QWidget *opened = nullptr;
            QTimer::singleShot(0, [&] { if ((opened = QApplication::activeModalWidget())) opened->hide(); });
            findControl<QPushButton>(&box, "cmdSysInfo")->click();
            QCoreApplication::processEvents();
            QVERIFY(!opened);
            QCOMPARE(messages.texts(QStringLiteral("notice")),
                     QStringList{QStringLiteral("System Information Is Unavailable At This Time")});
        }
        const QString text =
            systemInfoText(gatherSystemFacts(QStringLiteral("/nonexistent/tavrix.db"), {}));
        QVERIFY(text.contains(QStringLiteral("Database size: no such file\n")) && !text.contains(QStringLiteral("Database log")));
        QVERIFY(text.contains(QStringLiteral("Settings: unknown\n")));
    }
};

QTEST_MAIN(TestAbout)
#include "tst_about.moc"
