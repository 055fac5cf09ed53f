// The game messages on the wire: their exact bytes, decoding however the
// bytes arrive, and bad input of every kind ending as an ignored message.

#include "../support/data_table.h"
#include "../support/net_message_samples.h"

#include <QLocale>
#include <QTest>

using namespace tavrix;

namespace {

IgnoreReason reasonOf(const NetMessage &m)
{
    const auto *ignored = std::get_if<IgnoredMessage>(&m);
    return ignored ? ignored->reason : IgnoreReason(-1);
}

} // namespace

class TestMessageCodec : public QObject
{
    Q_OBJECT

private slots:
    void wireTextsAreExact_data()
    {
        // Sent: a message's exact bytes. Read: the receiver's side of the
        // same texts: the fourth character is skipped whatever it is, names
        // lose their end blanks, text ends at "|", invalid UTF-8 becomes
        // replacement characters. Names are held to the rules of a name
        // typed here (thirty characters, no control characters) and chat
        // lines to one line of 500 characters, however much was sent.
        addTable<bool, NetMessage, QByteArray>({"sent", "message", "bytes"},
            {{"hello", true, HelloMessage{QStringLiteral("Anna")}, "HEL Anna\x03"}, {"quit", true, QuitMessage{}, "QUI\x03"},
             {"hello drops a terminator", true, HelloMessage{QStringLiteral("Jü\x03rg")}, "HEL J\xc3\xbcrg\x03"},
             {"cricket with stats", true, GameMessage{NetGame::Cricket, true}, "GAM CRI|True\x03"},
             {"cricket", true, GameMessage{NetGame::Cricket, false}, "GAM CRI|False\x03"},
             {"301 double in", true, GameMessage{NetGame::Game301, false, true, false}, "GAM 301|1|0\x03"},
             {"another game", true, GameMessage{NetGame::Other}, ""}, {"bull ok", true, BullOkMessage{}, "BOK\x03"},
             {"bull", true, BullMessage{{230, -1.5f}}, "BUL|230|-1.5\x03"}, {"empty set", true, SetMessage{}, "SET\x03"},
             {"set", true, SetMessage{{{10, 20}, {30.25f, 40}}}, "SET|10|20|30.25|40\x03"},
             {"set of four", true, SetMessage{{{1, 2}, {3, 4}, {5, 6}, {7, 8}}}, "SET|1|2|3|4|5|6\x03"},
             {"play again", true, PlayAgainMessage{}, "PLA\x03"}, {"empty remark", true, RemarkMessage{}, "REM|\x03"},
             {"remark", true, RemarkMessage{QStringLiteral("a|b\x03")}, "REM|a|b\x03"},
             {"read: hello with blanks", false, HelloMessage{QStringLiteral("Bob O")}, "HEL  Bob O  "},
             {"read: hello after a bar", false, HelloMessage{QStringLiteral("Bob")}, "HEL|Bob"},
             {"read: cricket, true", false, GameMessage{NetGame::Cricket, true}, "GAM|CRI|true"},
             {"read: another game", false, GameMessage{NetGame::Other}, "GAM ATC|1"},
             {"read: remark with a bar", false, RemarkMessage{QStringLiteral("a")}, "REM|a|b"},
             {"read: empty remark", false, RemarkMessage{}, "REM||"},
             {"read: bye", false, IgnoredMessage{QStringLiteral("BYE"), IgnoreReason::Bye}, "BYE"},
             {"read: bull ok with more", false, BullOkMessage{}, "BOK|junk"},
             {"read: exponents", false, BullMessage{{250, 10}}, "BUL|2.5e2|1E1"},
             {"read: invalid UTF-8", false, RemarkMessage{QStringLiteral("a\uFFFD(\uFFFD")}, "REM|a\xc3(\xff"},
             {"read: lower case", false, IgnoredMessage{QStringLiteral("bok"), IgnoreReason::UnknownCommand}, "bok"},
             {"read: a long name", false, HelloMessage{QString(30, u'a')}, "HEL " + QByteArray(40, 'a')},
             {"read: a megabyte of name", false, HelloMessage{QString(30, u'n')}, "HEL   " + QByteArray(1 << 20, 'n')},
             {"read: control characters in a name", false, HelloMessage{QStringLiteral("Ann Lee")},
              "HEL \tAnn\nLee\r\x01"},
             {"read: a line separator in a name", false, HelloMessage{QStringLiteral("Ann Lee")}, "HEL Ann\xe2\x80\xa8Lee"},
             {"read: beyond the BMP a letter counts once", false,
              HelloMessage{QString(29, u'x') + QStringLiteral("🎯")}, "HEL " + QByteArray(29, 'x') + "🎯🎯"},
             {"read: a long chat line", false, RemarkMessage{QString(maxRemarkLength, u'c')}, "REM|" + QByteArray(600, 'c')},
             {"read: a chat line stays one line", false, RemarkMessage{QStringLiteral(" a b")}, "REM| a\nb"}});
    }
    void wireTextsAreExact()
    {
        QFETCH(bool, sent);
        QFETCH(NetMessage, message);
        QFETCH(QByteArray, bytes);
        if (sent)
            QCOMPARE(encodeMessage(message), bytes);
        else
            QCOMPARE(decodeFrame(bytes), message);
    }

    // Coordinates read back as the same float, in the shortest text.
    // What a caller must send first before the server takes it.
    void greetingIsKnownByItsFrame()
    {
        QVERIFY(isGreeting("HEL Bob"));
        for (const char *other : {"HEL ", "HEL", "hel Bob", "REM|HEL Bob", "GAM 501|0|1", ""})
            QVERIFY2(!isGreeting(other), other);
    }

    void coordinatesSurviveTheWire_data()
    {
        addTable<float>({"value"}, {{"0.1", 0.1f}, {"a third", 1.0f / 3}, {"under 260", 259.99998f}, {"-30", -30.0f},
                                    {"1e-7", 1e-7f}, {"under 4000", 3999.9998f}, {"-0", -0.0f}});
    }
    void coordinatesSurviveTheWire()
    {
        QFETCH(float, value);
        const QByteArray text = coordinateText(value);
        // Exactly: QCOMPARE would forgive floats a last-digit difference.
        QVERIFY2(text.toFloat() == value && !text.contains(',') && text.size() <= 13, text);
    }

    void numbersKeepThePointInAGermanLocale()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        const QByteArray tenth = coordinateText(0.1f);
        const QByteArray wire = encodeMessage(SetMessage{{{12.75f, 1234.5f}}});
        const NetMessage comma = decodeFrame("BUL|12,5|3");
        const NetMessage point = decodeFrame(wire.chopped(1));
        QLocale::setDefault(before);
        QCOMPARE(tenth, QByteArray("0.1"));
        QCOMPARE(wire, QByteArray("SET|12.75|1234.5\x03"));
        QCOMPARE(point, NetMessage(SetMessage{{{12.75f, 1234.5f}}}));
        QCOMPARE(reasonOf(comma), IgnoreReason::NotANumber);
    }

    // Each bad frame is ignored for its own reason, and the frame after it
    // still counts.
    void malformedFramesAreIgnored_data()
    {
        using R = IgnoreReason;
        addTable<QByteArray, IgnoreReason>({"frame", "reason"},
            {{"hello without a name", "HEL ", R::MissingField}, {"game without a type", "GAM", R::MissingField},
             {"cricket without stats", "GAM CRI", R::MissingField}, {"301 with one flag", "GAM 301|1", R::MissingField},
             {"flag not a number", "GAM 501|x|0", R::NotANumber}, {"flag 2", "GAM 501|0|2", R::OutOfRange},
             {"bull with one number", "BUL|12", R::MissingField}, {"bull, empty number", "BUL||12", R::NotANumber},
             {"bull far off", "BUL|1e9|3", R::OutOfRange}, {"bull at nan", "BUL|nan|3", R::OutOfRange},
             {"bull at -inf", "BUL|3|-inf", R::OutOfRange}, {"set with half a dart", "SET|1|2|3", R::MissingField},
             {"set of four", "SET|1|2|3|4|5|6|7|8", R::TooManyFields},
             {"set of three and a half", "SET|1|2|3|4|5|6|7", R::TooManyFields},
             {"set far off", "SET|1|2|3|4|5|-4000.5", R::OutOfRange},
             {"set of three million fields", QByteArray(3 << 20, '|').replace(0, 3, "SET"), R::TooManyFields},
             {"empty remark", "REM|", R::MissingField}, {"nothing", "", R::UnknownCommand},
             {"not UTF-8", "\xff\xfe\xc3|1|2", R::UnknownCommand},
             // The match message and its numbers.
             {"no fields", "MAT", R::MissingField}, {"bar only", "MAT|", R::MissingField},
             {"sets only", "MAT|2", R::MissingField}, {"sets not a number", "MAT|x|3", R::NotANumber},
             {"legs empty", "MAT|1|", R::NotANumber}, {"legs with a point", "MAT|1|3.0", R::NotANumber},
             {"legs beyond an int", "MAT|1|99999999999", R::NotANumber},
             {"12 legs", "MAT|1|12", R::OutOfRange}, {"no legs", "MAT|1|0", R::OutOfRange},
             {"negative legs", "MAT|1|-3", R::OutOfRange}, {"8 sets", "MAT|8|3", R::OutOfRange},
             {"sets of one leg", "MAT|2|1", R::OutOfRange}, {"sets of 6 legs", "MAT|2|6", R::OutOfRange},
             {"no sets", "MAT|0|3", R::OutOfRange},
             {"lower case", "mat|1|3", R::UnknownCommand}, {"a later command", "MAX|1|3", R::UnknownCommand}});
    }
    void malformedFramesAreIgnored()
    {
        QFETCH(QByteArray, frame);
        MessageDecoder decoder;
        const QList<NetMessage> got = decoder.feed(frame + '\x03' + "BOK\x03");
        QCOMPARE(got.size(), 2);
        QTEST(reasonOf(got[0]), "reason");
        QCOMPARE(got[1], NetMessage(BullOkMessage{}));
    }

    void oversizedInputIsBounded()
    {
        // (A megabyte before its terminator, one unknown frame, is sent by the
        // misbehaving peer of the network game test.) No terminator at all: the
        // pending bytes stay within the limit and the overflow is reported; the
        // decoder finds its feet at the next terminator.
        MessageDecoder decoder;
        const QByteArray chunk(64 * 1024, 'Q');
        for (int i = 0; i < 80; ++i) {
            QVERIFY(decoder.feed(chunk).isEmpty());
            QVERIFY(decoder.pendingSize() <= MessageDecoder::defaultPendingLimit);
        }
        QVERIFY(decoder.overflowed());
        QCOMPARE(decoder.feed("tail\x03QUI\x03"), (QList<NetMessage>{IgnoredMessage{QStringLiteral("QQQ"), IgnoreReason::Oversized},
                                         QuitMessage{}}));
        QVERIFY(decoder.overflowed());
        decoder.reset();
        QVERIFY(!decoder.overflowed());
        QCOMPARE(decoder.feed("BOK\x03"), QList<NetMessage>{BullOkMessage{}});
    }

    // Valid streams, names and chat lines in any script, cut at random
    // places, decode to the messages sent; damaged ones keep the limits.
    void randomStreamsKeepTheInvariants()
    {
        QRandomGenerator rng(20240517);
        for (int i = 0; i < 200000; ++i) {
            const QString failure = samples::fuzzOnce(rng);
            QVERIFY2(failure.isEmpty(), qPrintable(QStringLiteral("case %1: %2").arg(i).arg(failure)));
        }
    }
};

QTEST_GUILESS_MAIN(TestMessageCodec)
#include "tst_message_codec.moc"
