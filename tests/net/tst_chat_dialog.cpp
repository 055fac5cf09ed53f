// "Chat Window": lines from both sides in one transcript that outlives a
// connection, the newest line in view, a line that cannot go out, a flood
// of lines that costs the same for each and keeps only the newest, and
// where the window opens.

#include "../support/data_table.h"
#include "../support/test_home.h"
#include "ui/net/chat_dialog.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QTextDocument>

using namespace tavrix;

class TestChatDialog : public QObject {
    Q_OBJECT

private slots:
    void transcriptAndSending()
    {
        bool connected = true;
        QStringList sent;
        ChatDialog chat([&](const QString &text) {
            if (connected)
                sent << text;
            return connected;
        }, nullptr);
        chat.setLocalName(QStringLiteral("Ann"));
        auto *transcript = findControl<QPlainTextEdit>(&chat, "txtTranscript");
        auto *message = findControl<QLineEdit>(&chat, "txtMessage");

        // An arriving line shows the hidden window, scrolled to the end.
        for (int i = 0; i < 40; ++i)
            chat.displayMessage(QStringLiteral("Bob"), QStringLiteral("line %1").arg(i));
        QVERIFY(chat.isVisible() && transcript->verticalScrollBar()->maximum() > 0);
        QCOMPARE(transcript->verticalScrollBar()->value(), transcript->verticalScrollBar()->maximum());

        message->setText(QStringLiteral("Double | top?"));
        findControl<QPushButton>(&chat, "OKButton")->click();
        QCOMPARE(sent, QStringList{QStringLiteral("Double | top?")});
        QVERIFY(chat.transcript().endsWith(QStringLiteral("Bob: line 39\r\nAnn: Double | top?\r\n")));
        QCOMPARE(message->text(), QStringLiteral("Double | top?"));

        // Not connected: nothing is sent or shown as said, and the user is told.
        connected = false;
        chat.hide();
        QTest::keyClick(message, Qt::Key_Return);
        QCOMPARE(sent.size(), 1);
        QVERIFY(chat.transcript().endsWith(QStringLiteral("Ann: Double | top?\r\n")));
        QVERIFY(findControl<QLabel>(&chat, "lblChatStatus")->text().contains(QLatin1String("not sent")));

        // A later connection keeps the earlier lines.
        chat.displayMessage(QStringLiteral("Cy"), QString());
        QVERIFY(chat.transcript().startsWith(QStringLiteral("Bob: line 0\r\n")));
        QVERIFY(chat.transcript().endsWith(QStringLiteral("Cy: \r\n")));
    }

    // A line is written at the end; the lines before are not written again,
    // so a long chat does not make each line dearer. Past the bound the
    // oldest lines go.
    void transcriptGrowsAtItsEnd()
    {
        ChatDialog chat([](const QString &) { return true; }, nullptr);
        auto *transcript = findControl<QPlainTextEdit>(&chat, "txtTranscript");
        for (int i = 0; i < 1000; ++i)
            chat.displayMessage(QStringLiteral("Bob"), QStringLiteral("line %1").arg(i));
        int removed = 0;
        int added = 0;
        connect(transcript->document(), &QTextDocument::contentsChange, [&](int, int charsRemoved, int charsAdded) {
            removed += charsRemoved;
            added += charsAdded;
        });
        chat.displayMessage(QStringLiteral("Bob"), QStringLiteral("one more"));
        QCOMPARE(removed, 0);
        QVERIFY2(added < 40, qPrintable(QString::number(added)));

        for (int i = 0; i < ChatDialog::maxTranscriptLines; ++i)
            chat.displayMessage(QStringLiteral("Bob"), QStringLiteral("again %1").arg(i));
        QVERIFY(transcript->blockCount() <= ChatDialog::maxTranscriptLines);
        const QString kept = chat.transcript();
        QVERIFY(kept.startsWith(QStringLiteral("Bob: again 1\r\n")));
        QVERIFY(kept.endsWith(QStringLiteral("Bob: again %1\r\n").arg(ChatDialog::maxTranscriptLines - 1)));
    }

    // Beside the main window, right before left; failing both, in the
    // screen's top corner away from the board; never off the screen.
    void chatWindowPlace_data()
    {
        const QRect board(104, 80, 520, 520);
        addTable<QRect, QRect, QSize, QRect, QRect>({"main", "keepClear", "chat", "screen", "place"},
            {{"right", QRect(100, 50, 900, 700), board, QSize(360, 240), QRect(0, 0, 1920, 1080),
              QRect(1004, 50, 360, 240)},
             {"left", QRect(400, 50, 900, 700), board.translated(300, 0), QSize(360, 240), QRect(0, 0, 1600, 900),
              QRect(36, 50, 360, 240)},
             {"right corner, board on the left", QRect(0, 100, 1000, 600), board.translated(0, 100), QSize(360, 240),
              QRect(0, 0, 1024, 768), QRect(664, 0, 360, 240)},
             {"left corner, board on the right", QRect(0, 0, 1000, 700), QRect(470, 80, 520, 520), QSize(360, 240),
              QRect(0, 0, 1024, 768), QRect(0, 0, 360, 240)},
             {"main window low on a second screen", QRect(1920, 900, 800, 700), board.translated(1816, 850),
              QSize(360, 240), QRect(1920, 0, 1280, 1024), QRect(2724, 784, 360, 240)},
             {"larger than the screen", QRect(0, 0, 790, 590), QRect(4, 40, 520, 520), QSize(900, 700),
              QRect(0, 0, 800, 600), QRect(0, 0, 800, 600)}});
    }
    void chatWindowPlace()
    {
        QFETCH(QRect, main);
        QFETCH(QRect, keepClear);
        QFETCH(QSize, chat);
        QFETCH(QRect, screen);
        QFETCH(QRect, place);
        QCOMPARE(tavrix::chatWindowPlace(main, keepClear, chat, screen), place);
    }

    // An arriving line opens the window beside the main window; once the
    // user has moved it, it opens again where the user put it.
    void userPlacementIsKept()
    {
        QWidget main;
        main.setGeometry(10, 10, 300, 200);
        QWidget board(&main);
        board.setGeometry(0, 0, 200, 200);
        main.show();
        QVERIFY(QTest::qWaitForWindowExposed(&main));
        ChatDialog chat([](const QString &) { return true; }, &main);
        chat.setKeepClear(&board);
        chat.displayMessage(QStringLiteral("Bob"), QStringLiteral("hi"));
        QVERIFY(chat.isVisible());
        QVERIFY(chat.frameGeometry().left() > main.frameGeometry().right());
        QVERIFY(main.screen()->availableGeometry().contains(chat.frameGeometry()));

        const QPoint chosen(40, 300);
        chat.move(chosen);
        chat.hide();
        chat.displayMessage(QStringLiteral("Bob"), QStringLiteral("still there?"));
        QTRY_COMPARE(chat.pos(), chosen);
        QVERIFY(chat.userPlaced());
    }
};

QTEST_MAIN(TestChatDialog)
#include "tst_chat_dialog.moc"
