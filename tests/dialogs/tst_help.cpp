// The help: every page is reached from the contents and every link lands;
// what the pages quote is what the program shows; F1 opens the page of the
// mode; without pages the user is told where they were looked for.

#include "../support/data_table.h"
#include "../support/program_test.h"
#include "ui/dialogs/club_database_dialog.h"
#include "ui/dialogs/server_password_dialog.h"
#include "ui/help/help_viewer.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>

namespace {

const QString builtHelp = QStringLiteral(TAVRIX_BUILT_HELP);

QString fileText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList matches(const QString &pattern, const QString &text)
{
    QStringList found;
    for (auto it = QRegularExpression(pattern, QRegularExpression::DotMatchesEverythingOption).globalMatch(text);
         it.hasNext();)
        found.append(it.next().captured(1));
    return found;
}

// Text as a reader sees it: no tags, the entities the pages use, blanks collapsed.
QString readable(QString html)
{
    html.replace(QRegularExpression(QStringLiteral("<[^>]*>")), QStringLiteral(" "));
    return html.replace(QStringLiteral("&quot;"), QStringLiteral("\"")).replace(QStringLiteral("&amp;"), QStringLiteral("&")).simplified();
}

QString unquoted(const QString &text)
{
    return text.size() > 1 && text.startsWith('"') && text.endsWith('"') ? text.mid(1, text.size() - 2) : text;
}

} // namespace

class TestHelp : public ProgramTest {
    Q_OBJECT

    tavrix::HelpViewer *viewer() const { return window()->findChild<tavrix::HelpViewer *>(QStringLiteral("HelpViewer")); }
    template <typename T>
    T *inViewer(const char *name) const { return viewer()->findChild<T *>(QString::fromLatin1(name)); }
    static QStringList sourcePages()
    {
        return QDir(QStringLiteral(TAVRIX_SOURCE_HELP)).entryList({QStringLiteral("*.html")}, QDir::Files);
    }
    // Every caption, title and objectName the windows show now, as the pages would quote them.
    void collectCaptions(QSet<QString> &captions) const
    {
        QList<QObject *> objects = window()->findChildren<QObject *>();
        for (QObject *object : std::as_const(objects << window())) {
            // The caption properties of actions, buttons, labels, frames, menus and windows (not
            // what was typed into an edit), and a list's items.
            QStringList texts{object->objectName()};
            for (const char *property : {"text", "title", "windowTitle"})
                texts << (qobject_cast<QLineEdit *>(object) ? QString() : object->property(property).toString());
            if (auto *list = qobject_cast<QComboBox *>(object))
                for (int i = 0; i < list->count(); ++i)
                    texts << list->itemText(i);
            for (const QString &text : std::as_const(texts))
                captions << text.simplified() << unquoted(text.simplified());
        }
    }

private slots:
    void init()
    {
        startProgram();
        window()->setHelpFolder(builtHelp);
    }
    void cleanup() { program_.reset(); }

    // Each page of the source is copied beside the program unchanged and is
    // whole in itself: a title for the contents, no scripts, nothing fetched,
    // and every link lands on a page and anchor that exist.
    void eachPageIsCopiedWholeAndItsLinksLand_data()
    {
        QTest::addColumn<QString>("page");
        for (const QString &page : sourcePages())
            QTest::newRow(qPrintable(page)) << page;
    }
    void eachPageIsCopiedWholeAndItsLinksLand()
    {
        QFETCH(QString, page);
        const QDir source(QStringLiteral(TAVRIX_SOURCE_HELP));
        const QString html = fileText(builtHelp + '/' + page);
        QCOMPARE(html, fileText(source.filePath(page)));
        QVERIFY(html.contains(QRegularExpression(QStringLiteral("<title>.+</title>"))));
        QVERIFY(!html.contains(QRegularExpression(QStringLiteral("<script|\\bsrc\\s*="))));
        QStringList broken;
        for (const QString &link : matches(QStringLiteral("href=\"([^\"]*)\""), html)) {
            const QString target = link.startsWith('#') ? page : link.section('#', 0, 0);
            const QString anchor = link.section('#', 1);
            if (link.contains(':') || !sourcePages().contains(target)
                || (!anchor.isEmpty() && !fileText(source.filePath(target)).contains(QStringLiteral("id=\"%1\"").arg(anchor))))
                broken << link;
        }
        QCOMPARE(broken, QStringList());
    }

    // The build copies no page more or less, and the contents lead to every page.
    void everyPageIsReachedFromTheContents()
    {
        QCOMPARE(QDir(builtHelp).entryList(QDir::Files),
                 QDir(QStringLiteral(TAVRIX_SOURCE_HELP)).entryList(QDir::Files));
        QSet<QString> reached{QStringLiteral("index.html")};
        for (QStringList toRead{QStringLiteral("index.html")}; !toRead.isEmpty();) {
            const QString page = toRead.takeFirst();
            for (const QString &link : matches(QStringLiteral("href=\"([^\"#]+)"), fileText(builtHelp + '/' + page)))
                if (!reached.contains(link))
                    toRead.append(link), reached.insert(link);
        }
        const QStringList pages = sourcePages();
        QCOMPARE(reached, QSet<QString>(pages.begin(), pages.end()));
    }

    // Quoted texts are captions, titles or names of controls; texts the
    // program says stand in class "said", commands in code.
    void quotedCaptionsAreThoseOfTheProgram()
    {
        QSet<QString> captions;
        action("mnuHelpHelp")->trigger();
        window()->newUserDialog(), window()->userSelectDialog(), window()->userEditDialog(), window()->alertBox();
        new tavrix::ClubDatabaseDialog(std::nullopt, window());
        new tavrix::ServerPasswordDialog({}, window());
        collectCaptions(captions);
        startAgainst(QStringLiteral("Bob")); // "Confirm Dart"
        collectCaptions(captions);
        corkAnnFirst(); // "Ok"
        collectCaptions(captions);
        // Shown once a game is won; the games' own tests play one to its end.
        captions << tavrix::mainButtonCaption(tavrix::GamePhase::GameOver, false);
        // The main button between the legs of a match; until the play
        // frame offers it, the matches page is held to this caption.
        captions << QStringLiteral("Next Leg");
        action("mnuModePractice")->trigger();
        for (int sequence : {1, 2, 0}) { // count down, count up, a single set
            control<QComboBox>("ScoreDrop")->setCurrentIndex(sequence);
            control<QPushButton>("goButton")->click();
            collectCaptions(captions);
            if (sequence)
                control<QPushButton>("goButton")->click();
        }
        QStringList quoted, strangers;
        for (const QString &page : QDir(builtHelp).entryList({QStringLiteral("*.html")})) {
            QString body = fileText(builtHelp + '/' + page).section(QStringLiteral("<body>"), 1);
            body.remove(QRegularExpression(QStringLiteral("<code>.*?</code>|<span class=\"said\">.*?</span>"),
                                           QRegularExpression::DotMatchesEverythingOption));
            for (const QString &ui : matches(QStringLiteral("<span class=\"ui\">(.*?)</span>"), body))
                quoted << page + '|' + unquoted(readable(ui));
            body.remove(QRegularExpression(QStringLiteral("<span class=\"ui\">.*?</span>")));
            for (const QString &text : matches(QStringLiteral("\"([^\"]*)\""), readable(body)))
                quoted << page + '|' + text;
        }
        for (const QString &text : std::as_const(quoted))
            if (!captions.contains(text.section('|', 1).simplified()))
                strangers << text;
        QVERIFY2(strangers.isEmpty(), qPrintable(strangers.join('\n')));
        QVERIFY(quoted.size() > 100);
    }

    // F1 opens the page of the mode the window is in.
    void f1OpensThePageOfTheMode_data()
    {
        addTable<QString, QString>({"mode", "page"}, {{"practice", "mnuModePractice", "practice.html"},
                                                      {"review", "mnuModeReview", "review.html"}, {"play", "mnuModePlay", "play.html"},
                                                      {"training", "mnuModeTraining", "training.html"}});
    }
    void f1OpensThePageOfTheMode()
    {
        QFETCH(QString, mode);
        action(qPrintable(mode))->trigger();
        key(Qt::Key_F1);
        QVERIFY(viewer() && viewer()->isVisible());
        QTEST(viewer()->currentPage(), "page");
    }

    // Without pages the message names where they were looked for; the menu
    // opens the contents; the search finds the pages that hold every word
    // typed.
    void theViewerOpensAtTheContentsOrSaysWhereItLooked()
    {
        window()->setHelpFolder({}); // as found beside the program, where the tests have none
        action("mnuHelpHelp")->trigger();
        QCOMPARE(messages_.titles(), QStringList{QStringLiteral("Tavrix! Help")});
        QVERIFY(messages_.shown[0].text.contains(QCoreApplication::applicationDirPath() + QStringLiteral("/help"))
                && messages_.shown[0].text.contains(QStringLiteral("share/tavrix/help")) && !viewer());

        window()->setHelpFolder(builtHelp);
        action("mnuModeReview")->trigger();
        key(Qt::Key_F1); // the contents come even when another page is open
        action("mnuHelpHelp")->trigger();
        QCOMPARE(viewer()->currentPage(), QStringLiteral("index.html"));
        auto *contents = inViewer<QListWidget>("helpContents");
        QCOMPARE(contents->count(), QDir(builtHelp).entryList({QStringLiteral("*.html")}).size());

        auto *search = inViewer<QLineEdit>("helpSearch");
        auto *results = inViewer<QListWidget>("helpResults");
        search->setText(QStringLiteral("FIREWALL port")); // case aside
        QCOMPARE(results->item(0)->text(), QStringLiteral("Network play"));
        search->setText(QStringLiteral("firewall zebra")); // no page holds both
        QVERIFY(results->count() == 1 && results->item(0)->flags() == Qt::NoItemFlags);

        // Escape closes the viewer, also from the search box.
        viewer()->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), viewer());
        QTest::keyClick(search, Qt::Key_Escape);
        QVERIFY(!viewer()->isVisible());
    }
};

QTEST_MAIN(TestHelp)
#include "tst_help.moc"
