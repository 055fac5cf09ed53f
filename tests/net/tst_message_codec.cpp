// The game messages on the wire: their exact bytes, decoding however the
// bytes arrive, and bad input of every kind ending as an ignored message.

#include "../support/net_message_samples.h"

#include <QLocale>
#include <QTest>

using namespace tavrix;

Q_DECLARE_METATYPE(tavrix::IgnoreReason)

namespace {

QByteArray frameOf(const QByteArray &wire) { return wire.chopped(1); }

IgnoreReason reasonOf(const NetMessage &m)
{
    const auto *ignored = std::get_if<IgnoredMessage>(&m);
    return ignored ? ignored->reason : IgnoreReason(-1);
}

// A game as the client receives it, with a name and a chat line whose UTF-8
// bytes a split may cut in the middle.
const QList<NetMessage> gameFromServer{
    HelloMessage{QStringLiteral("Jürgen 🎯")},
    GameMessage{NetGame::Game501, false, false, true},
    BullMessage{{231, 228.5f}},
    BullOkMessage{},
    SetMessage{{{230, 110}, {-1, -1}, {0.1f, 1000.0f / 3}}},
    SetMessage{},
    RemarkMessage{QStringLiteral("schön gespielt")},
    PlayAgainMessage{},
    GameMessage{NetGame::Cricket, true, false, false},
    QuitMessage{},
};

} // namespace

class TestMessageCodec : public QObject
{
    Q_OBJECT

private slots:
    void wireTextsAreExact()
    {
        QCOMPARE(encodeMessage(HelloMessage{QStringLiteral("Anna")}), QByteArray("HEL Anna\x03"));
        QCOMPARE(encodeMessage(HelloMessage{QStringLiteral("Jü\x03rg")}), QByteArray("HEL J\xc3\xbcrg\x03"));
        QCOMPARE(encodeMessage(GameMessage{NetGame::Cricket, true}), QByteArray("GAM CRI|True\x03"));
        QCOMPARE(encodeMessage(GameMessage{NetGame::Cricket, false}), QByteArray("GAM CRI|False\x03"));
        QCOMPARE(encodeMessage(GameMessage{NetGame::Game301, false, true, false}), QByteArray("GAM 301|1|0\x03"));
        QCOMPARE(encodeMessage(GameMessage{NetGame::Game501, false, false, true}), QByteArray("GAM 501|0|1\x03"));
        QCOMPARE(encodeMessage(GameMessage{NetGame::Other}), QByteArray());
        QCOMPARE(encodeMessage(BullMessage{{230, -1.5f}}), QByteArray("BUL|230|-1.5\x03"));
        QCOMPARE(encodeMessage(SetMessage{{{10, 20}, {30.25f, 40}}}), QByteArray("SET|10|20|30.25|40\x03"));
        QCOMPARE(encodeMessage(SetMessage{{{1, 2}, {3, 4}, {5, 6}, {7, 8}}}), QByteArray("SET|1|2|3|4|5|6\x03"));
        QCOMPARE(encodeMessage(SetMessage{}), QByteArray("SET\x03"));
        QCOMPARE(encodeMessage(BullOkMessage{}), QByteArray("BOK\x03"));
        QCOMPARE(encodeMessage(PlayAgainMessage{}), QByteArray("PLA\x03"));
        QCOMPARE(encodeMessage(QuitMessage{}), QByteArray("QUI\x03"));
        QCOMPARE(encodeMessage(RemarkMessage{QStringLiteral("a|b\x03")}), QByteArray("REM|a|b\x03"));
        QCOMPARE(encodeMessage(RemarkMessage{}), QByteArray("REM|\x03"));

        // The receiver's side of the same texts: the fourth character is
        // skipped whatever it is, names lose their end blanks, text ends at "|".
        QCOMPARE(decodeFrame("HEL  Bob O  "), NetMessage(HelloMessage{QStringLiteral("Bob O")}));
        QCOMPARE(decodeFrame("HEL|Bob"), NetMessage(HelloMessage{QStringLiteral("Bob")}));
        QCOMPARE(decodeFrame("GAM|CRI|true"), NetMessage(GameMessage{NetGame::Cricket, true}));
        QCOMPARE(decodeFrame("GAM ATC|1"), NetMessage(GameMessage{NetGame::Other}));
        QCOMPARE(decodeFrame("REM|a|b"), NetMessage(RemarkMessage{QStringLiteral("a")}));
        QCOMPARE(decodeFrame("REM||"), NetMessage(RemarkMessage{}));
        QCOMPARE(decodeFrame("BOK|junk"), NetMessage(BullOkMessage{}));
        QCOMPARE(decodeFrame("BUL|2.5e2|1E1"), NetMessage(BullMessage{{250, 10}}));
        QCOMPARE(decodeFrame("BYE"), NetMessage(IgnoredMessage{QStringLiteral("BYE"), IgnoreReason::Bye}));
        QCOMPARE(decodeFrame("bok"), NetMessage(IgnoredMessage{QStringLiteral("bok"), IgnoreReason::UnknownCommand}));
    }

    void everyMessageSurvivesTheWire()
    {
        for (const NetMessage &m : gameFromServer)
            QCOMPARE(decodeFrame(frameOf(encodeMessage(m))), m);
        // Coordinates read back as the same float, in the shortest text.
        for (const float v : {0.1f, 1.0f / 3, 259.99998f, -30.0f, 1e-7f, 3999.9998f, -0.0f}) {
            const QByteArray text = coordinateText(v);
            // Exactly: QCOMPARE would forgive floats a last-digit difference.
            QVERIFY2(text.toFloat() == v && !text.contains(',') && text.size() <= 13, text);
        }
        QCOMPARE(coordinateText(0.1f), QByteArray("0.1"));
        QCOMPARE(coordinateText(495), QByteArray("495"));
    }

    void numbersKeepThePointInAGermanLocale()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        const QByteArray wire = encodeMessage(SetMessage{{{12.75f, 1234.5f}}});
        const NetMessage comma = decodeFrame("BUL|12,5|3");
        const NetMessage point = decodeFrame(frameOf(wire));
        QLocale::setDefault(before);
        QCOMPARE(wire, QByteArray("SET|12.75|1234.5\x03"));
        QCOMPARE(point, NetMessage(SetMessage{{{12.75f, 1234.5f}}}));
        QCOMPARE(reasonOf(comma), IgnoreReason::NotANumber);
    }

    void aGameDecodesTheSameHoweverItArrives()
    {
        QByteArray stream;
        for (const NetMessage &m : gameFromServer)
            stream += encodeMessage(m);
        stream += "BYE\x03";
        QList<NetMessage> expected = gameFromServer;
        expected << IgnoredMessage{QStringLiteral("BYE"), IgnoreReason::Bye};

        MessageDecoder whole;
        QCOMPARE(whole.feed(stream), expected);
        QCOMPARE(whole.pendingSize(), 0);

        // Two arrivals, cut at every byte, inside the UTF-8 of "ü" and "🎯" too.
        for (qsizetype cut = 0; cut <= stream.size(); ++cut) {
            MessageDecoder decoder;
            QList<NetMessage> got = decoder.feed(stream.first(cut));
            got += decoder.feed(stream.sliced(cut));
            QVERIFY2(got == expected, qPrintable(QStringLiteral("cut at %1").arg(cut)));
        }

        MessageDecoder drip;
        QList<NetMessage> got;
        for (const char byte : stream)
            got += drip.feed(QByteArray(1, byte));
        QCOMPARE(got, expected);
    }

    void malformedFramesAreIgnored_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<IgnoreReason>("reason");
        QTest::newRow("no name") << QByteArray("HEL ") << IgnoreReason::MissingField;
        QTest::newRow("no game") << QByteArray("GAM") << IgnoreReason::MissingField;
        QTest::newRow("cricket without option") << QByteArray("GAM CRI") << IgnoreReason::MissingField;
        QTest::newRow("301 one box") << QByteArray("GAM 301|1") << IgnoreReason::MissingField;
        QTest::newRow("box not a number") << QByteArray("GAM 501|x|0") << IgnoreReason::NotANumber;
        QTest::newRow("box 2") << QByteArray("GAM 501|0|2") << IgnoreReason::OutOfRange;
        QTest::newRow("bull one field") << QByteArray("BUL|12") << IgnoreReason::MissingField;
        QTest::newRow("bull empty field") << QByteArray("BUL||12") << IgnoreReason::NotANumber;
        QTest::newRow("bull words") << QByteArray("BUL|left|top") << IgnoreReason::NotANumber;
        QTest::newRow("bull far away") << QByteArray("BUL|1e9|3") << IgnoreReason::OutOfRange;
        QTest::newRow("bull nan") << QByteArray("BUL|nan|3") << IgnoreReason::OutOfRange;
        QTest::newRow("bull infinite") << QByteArray("BUL|3|-inf") << IgnoreReason::OutOfRange;
        QTest::newRow("set odd") << QByteArray("SET|1|2|3") << IgnoreReason::MissingField;
        QTest::newRow("set four darts") << QByteArray("SET|1|2|3|4|5|6|7|8") << IgnoreReason::TooManyFields;
        QTest::newRow("set huge") << QByteArray("SET|1|2|3|4|5|-4000.5") << IgnoreReason::OutOfRange;
        QTest::newRow("set seven fields") << QByteArray("SET|1|2|3|4|5|6|7") << IgnoreReason::TooManyFields;
        QTest::newRow("set of bars") << QByteArray(3 << 20, '|').replace(0, 3, "SET")
                                     << IgnoreReason::TooManyFields;
        QTest::newRow("empty chat") << QByteArray("REM|") << IgnoreReason::MissingField;
        QTest::newRow("empty frame") << QByteArray() << IgnoreReason::UnknownCommand;
        QTest::newRow("bad utf-8") << QByteArray("\xff\xfe\xc3|1|2") << IgnoreReason::UnknownCommand;
    }

    void malformedFramesAreIgnored()
    {
        QFETCH(QByteArray, frame);
        QFETCH(IgnoreReason, reason);
        MessageDecoder decoder;
        const QList<NetMessage> got = decoder.feed(frame + '\x03' + "BOK\x03");
        QCOMPARE(got.size(), 2);
        QCOMPARE(reasonOf(got[0]), reason);
        QCOMPARE(got[1], NetMessage(BullOkMessage{}));
    }

    void invalidUtf8BecomesReplacementCharacters()
    {
        const NetMessage m = decodeFrame("REM|a\xc3(\xff");
        QCOMPARE(m, NetMessage(RemarkMessage{QStringLiteral("a\uFFFD(\uFFFD")}));
    }

    void oversizedInputIsBounded()
    {
        // A megabyte before its terminator is one unknown frame.
        MessageDecoder decoder;
        const QByteArray megabyte(1 << 20, 'Z');
        QList<NetMessage> got = decoder.feed(megabyte.first(1000));
        got += decoder.feed(megabyte.sliced(1000) + "\x03PLA\x03");
        QCOMPARE(got, (QList<NetMessage>{IgnoredMessage{QStringLiteral("ZZZ"), IgnoreReason::UnknownCommand},
                                         PlayAgainMessage{}}));
        QVERIFY(!decoder.overflowed());

        // No terminator at all: the pending bytes stay within the limit and the
        // overflow is reported; the decoder finds its feet at the next terminator.
        const QByteArray chunk(64 * 1024, 'Q');
        for (int i = 0; i < 80; ++i) {
            QVERIFY(decoder.feed(chunk).isEmpty());
            QVERIFY(decoder.pendingSize() <= MessageDecoder::defaultPendingLimit);
        }
        QVERIFY(decoder.overflowed());
        got = decoder.feed("tail\x03QUI\x03");
        QCOMPARE(got, (QList<NetMessage>{IgnoredMessage{QStringLiteral("QQQ"), IgnoreReason::Oversized},
                                         QuitMessage{}}));
        QVERIFY(decoder.overflowed());
        decoder.reset();
        QVERIFY(!decoder.overflowed());
        QCOMPARE(decoder.feed("BOK\x03"), QList<NetMessage>{BullOkMessage{}});
    }

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
