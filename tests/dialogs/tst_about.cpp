// The About box and its system facts, opened from the program's Help menu.

#include "../support/data_table.h"
#include "../support/program_test.h"
#include "ui/help/about_dialog.h"
#include "ui/help/sys_info_dialog.h"

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QPushButton>

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

} // namespace

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
    // licence, and copies the facts it shows whole. The facts a bug report
    // needs are those of this home: its database, the file's size and that
    // of its write-ahead log, where the newest rows wait, and the home's
    // folder, where TestHome put the settings.
    void aboutBoxShowsVersionAndLicenceAndTheFactsOfThisHome()
    {
        startProgram();
        const Shown shown = openAboutBox();
        QCOMPARE(shown.names,
                 (QStringList{"About Tavrix!", "Tavrix!", "Version " TAVRIX_PROJECT_VERSION,
                              "Licensed under the GNU General Public License, version 3 or later.\n"
                              "Tavrix comes with ABSOLUTELY NO WARRANTY."}));
        QVERIFY(shown.copied == shown.facts && messages_.shown.isEmpty());
        const QFileInfo db(home_->dbPath);
        for (const QString &fact : {QStringLiteral("Version: " TAVRIX_PROJECT_VERSION "\n"),
                                    QStringLiteral("Database: %1\n").arg(db.absoluteFilePath()),
                                    QStringLiteral("Database size: %1 bytes\n").arg(db.size()),
                                    QStringLiteral("Database log: %1 bytes\n").arg(QFileInfo(home_->dbPath + "-wal").size()),
                                    QStringLiteral("Settings: %1/").arg(home_->dir.path())})
            QVERIFY2(shown.facts.contains(fact), qPrintable(fact + " not in:\n" + shown.facts));
    }

    // Facts that cannot be gathered, by a failure or because none is known,
    // are said to be unavailable instead of showing an empty list.
    void missingFactsAreSaidToBeUnavailable_data() { addTable<bool>({"throws"}, {{"gathering fails", true}, {"nothing known", false}}); }
    void missingFactsAreSaidToBeUnavailable()
    {
        QFETCH(bool, throws);
        FakeMessages messages;
        AboutDialog box(messages, [throws]() -> SystemFacts {
            if (throws)
                throw std::runtime_error("no facts");
            return {};
        });
        QVERIFY(!opensADialog([&] { findControl<QPushButton>(&box, "cmdSysInfo")->click(); }));
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
