// "Chat Window": lines from both sides in one transcript that outlives a
// connection, the newest line in view, and a line that cannot go out.

#include "../support/test_home.h"
#include "ui/net/chat_dialog.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>

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
};

QTEST_MAIN(TestChatDialog)
#include "tst_chat_dialog.moc"
