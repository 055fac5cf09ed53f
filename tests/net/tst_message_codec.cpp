// The game messages on the wire: their exact bytes, decoding however the
// bytes arrive, and bad input of every kind ending as an ignored message.

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
    void wireTextsAreExact()
    {
        const QList<std::pair<NetMessage, QByteArray>> sent{
            {HelloMessage{QStringLiteral("Anna")}, "HEL Anna\x03"}, {HelloMessage{QStringLiteral("Jü\x03rg")}, "HEL J\xc3\xbcrg\x03"},
            {GameMessage{NetGame::Cricket, true}, "GAM CRI|True\x03"}, {GameMessage{NetGame::Cricket, false}, "GAM CRI|False\x03"},
            {GameMessage{NetGame::Game301, false, true, false}, "GAM 301|1|0\x03"}, {GameMessage{NetGame::Other}, ""},
            {BullMessage{{230, -1.5f}}, "BUL|230|-1.5\x03"}, {SetMessage{{{10, 20}, {30.25f, 40}}}, "SET|10|20|30.25|40\x03"},
            {SetMessage{{{1, 2}, {3, 4}, {5, 6}, {7, 8}}}, "SET|1|2|3|4|5|6\x03"}, {SetMessage{}, "SET\x03"},
            {BullOkMessage{}, "BOK\x03"}, {PlayAgainMessage{}, "PLA\x03"}, {QuitMessage{}, "QUI\x03"},
            {RemarkMessage{QStringLiteral("a|b\x03")}, "REM|a|b\x03"}, {RemarkMessage{}, "REM|\x03"}};
        for (const auto &[message, bytes] : sent)
            QCOMPARE(encodeMessage(message), bytes);

        // The receiver's side of the same texts: the fourth character is
        // skipped whatever it is, names lose their end blanks, text ends at
        // "|", invalid UTF-8 becomes replacement characters.
        const QList<std::pair<QByteArray, NetMessage>> received{
            {"HEL  Bob O  ", HelloMessage{QStringLiteral("Bob O")}}, {"HEL|Bob", HelloMessage{QStringLiteral("Bob")}},
            {"GAM|CRI|true", GameMessage{NetGame::Cricket, true}}, {"GAM ATC|1", GameMessage{NetGame::Other}},
            {"REM|a|b", RemarkMessage{QStringLiteral("a")}}, {"REM||", RemarkMessage{}}, {"BOK|junk", BullOkMessage{}},
            {"REM|a\xc3(\xff", RemarkMessage{QStringLiteral("a\uFFFD(\uFFFD")}}, {"BUL|2.5e2|1E1", BullMessage{{250, 10}}},
            {"BYE", IgnoredMessage{QStringLiteral("BYE"), IgnoreReason::Bye}},
            {"bok", IgnoredMessage{QStringLiteral("bok"), IgnoreReason::UnknownCommand}}};
        for (const auto &[bytes, message] : received)
            QCOMPARE(decodeFrame(bytes), message);
    }

    // Coordinates read back as the same float, in the shortest text.
    void coordinatesSurviveTheWire()
    {
        for (const float v : {0.1f, 1.0f / 3, 259.99998f, -30.0f, 1e-7f, 3999.9998f, -0.0f}) {
            const QByteArray text = coordinateText(v);
            // Exactly: QCOMPARE would forgive floats a last-digit difference.
            QVERIFY2(text.toFloat() == v && !text.contains(',') && text.size() <= 13, text);
        }
        QCOMPARE(coordinateText(0.1f), QByteArray("0.1"));
    }

    void numbersKeepThePointInAGermanLocale()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        const QByteArray wire = encodeMessage(SetMessage{{{12.75f, 1234.5f}}});
        const NetMessage comma = decodeFrame("BUL|12,5|3");
        const NetMessage point = decodeFrame(wire.chopped(1));
        QLocale::setDefault(before);
        QCOMPARE(wire, QByteArray("SET|12.75|1234.5\x03"));
        QCOMPARE(point, NetMessage(SetMessage{{{12.75f, 1234.5f}}}));
        QCOMPARE(reasonOf(comma), IgnoreReason::NotANumber);
    }

    // Each bad frame is ignored for its own reason, and the frame after it
    // still counts.
    void malformedFramesAreIgnored()
    {
        using R = IgnoreReason;
        const QList<std::pair<QByteArray, IgnoreReason>> frames{
            {"HEL ", R::MissingField}, {"GAM", R::MissingField}, {"GAM CRI", R::MissingField},
            {"GAM 301|1", R::MissingField}, {"GAM 501|x|0", R::NotANumber}, {"GAM 501|0|2", R::OutOfRange},
            {"BUL|12", R::MissingField}, {"BUL||12", R::NotANumber}, {"BUL|1e9|3", R::OutOfRange},
            {"BUL|nan|3", R::OutOfRange}, {"BUL|3|-inf", R::OutOfRange}, {"SET|1|2|3", R::MissingField},
            {"SET|1|2|3|4|5|6|7|8", R::TooManyFields}, {"SET|1|2|3|4|5|6|7", R::TooManyFields},
            {"SET|1|2|3|4|5|-4000.5", R::OutOfRange}, {QByteArray(3 << 20, '|').replace(0, 3, "SET"), R::TooManyFields},
            {"REM|", R::MissingField}, {"", R::UnknownCommand}, {"\xff\xfe\xc3|1|2", R::UnknownCommand}};
        for (const auto &[frame, reason] : frames) {
            MessageDecoder decoder;
            const QList<NetMessage> got = decoder.feed(frame + '\x03' + "BOK\x03");
            QVERIFY2(got.size() == 2 && reasonOf(got[0]) == reason && got[1] == NetMessage(BullOkMessage{}),
                     frame.left(30).constData());
        }
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
