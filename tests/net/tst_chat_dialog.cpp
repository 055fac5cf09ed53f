// "Chat Window": lines from both sides in one transcript that outlives a
// connection, the newest line in view, a line that cannot go out, and a
// flood of lines that costs the same for each and keeps only the newest.

#include "../support/test_home.h"
#include "ui/net/chat_dialog.h"

#include <QLabel>
#include <QPlainTextEdit>
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
};

QTEST_MAIN(TestChatDialog)
#include "tst_chat_dialog.moc"
