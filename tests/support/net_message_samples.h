#pragma once

// Random game messages, damaged copies of their bytes and one round of
// feeding them to a decoder with its invariants checked. Shared by the codec's
// unit test (a short run) and its fuzz driver (long runs on demand).

#include "core/games/match_play.h"
#include "core/net/message_codec.h"

#include <QRandomGenerator>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace tavrix::samples {

// Names and chat text with blanks at the ends, separators, terminators,
// umlauts, CJK and characters outside the BMP.
inline QString randomText(QRandomGenerator &rng)
{
    static const QStringList pieces{
        QStringLiteral("Anna"),  QStringLiteral(" "),    QStringLiteral("|"),
        QString(QChar(3)),       QStringLiteral("Jürgen"), QStringLiteral("Łódź"),
        QStringLiteral("東京"),  QStringLiteral("🎯"),   QStringLiteral("O'Neil"),
        QStringLiteral("x")};
    QString text;
    for (int i = int(rng.bounded(6)); i > 0; --i)
        text += pieces[rng.bounded(pieces.size())];
    return text;
}

inline float randomCoordinate(QRandomGenerator &rng)
{
    switch (rng.bounded(4)) {
    case 0: return float(int(rng.bounded(521)) - 30);      // whole pixels
    case 1: return float(rng.generateDouble() * 560 - 30); // any float
    case 2: return -1.0f;                                  // a hidden marker
    default: return float(int(rng.bounded(5200)) - 30) / 10.0f;
    }
}

inline NetMessage randomMessage(QRandomGenerator &rng)
{
    auto pos = [&rng] { return PicturePos{randomCoordinate(rng), randomCoordinate(rng)}; };
    switch (rng.bounded(10)) {
    case 0: {
        QString name = randomText(rng);
        return HelloMessage{name.isEmpty() ? QStringLiteral("P") : name};
    }
    case 1: {
        const auto game = NetGame(rng.bounded(3));
        const bool a = rng.bounded(2), b = rng.bounded(2);
        return game == NetGame::Cricket ? GameMessage{game, a, false, false}
                                        : GameMessage{game, false, a, b};
    }
    case 2: return BullMessage{pos()};
    case 3: {
        SetMessage set;
        for (int i = int(rng.bounded(4)); i > 0; --i)
            set.darts << pos();
        return set;
    }
    case 4: return BullOkMessage{};
    case 5: return PlayAgainMessage{};
    case 6: return QuitMessage{};
    case 7: {
        // Any format within its bounds, the single game among them.
        const MatchFormat format = formatOfChoice(int(rng.bounded(3)), rng.bounded(2, 12), rng.bounded(2, 8));
        const auto [sets, legs] = wireFormat(format);
        return MatchMessage{sets, legs};
    }
    case 8: return MatchOkMessage{};
    default: return RemarkMessage{randomText(rng)};
    }
}

// What the peer's decoder makes of a message: terminators are dropped when
// sending, text ends at the first "|", names lose their end blanks, and an
// empty chat line is ignored.
inline NetMessage afterWire(const NetMessage &sent)
{
    auto cut = [](QString text) { return text.remove(QChar(3)).section(u'|', 0, 0); };
    if (const auto *hello = std::get_if<HelloMessage>(&sent)) {
        if (QString(hello->name).remove(QChar(3)).isEmpty())
            return IgnoredMessage{QStringLiteral("HEL"), IgnoreReason::MissingField};
        QString name = cut(hello->name);
        while (name.startsWith(u' '))
            name.remove(0, 1);
        while (name.endsWith(u' '))
            name.chop(1);
        return HelloMessage{name};
    }
    if (const auto *remark = std::get_if<RemarkMessage>(&sent)) {
        if (QString(remark->text).remove(QChar(3)).isEmpty())
            return IgnoredMessage{QStringLiteral("REM"), IgnoreReason::MissingField};
        return RemarkMessage{cut(remark->text)};
    }
    return sent;
}

// Cuts bytes into one to four pieces at random places.
inline QList<QByteArray> randomPieces(const QByteArray &bytes, QRandomGenerator &rng)
{
    QList<QByteArray> pieces;
    qsizetype at = 0;
    for (int cuts = int(rng.bounded(4)); cuts > 0 && at < bytes.size(); --cuts) {
        const qsizetype next = at + qsizetype(rng.bounded(quint32(bytes.size() - at + 1)));
        pieces << bytes.sliced(at, next - at);
        at = next;
    }
    pieces << bytes.sliced(at);
    return pieces;
}

// One damage done to a valid byte stream: flips, cuts, repeats, splices with
// another stream, stray terminators and random bytes.
inline QByteArray mutated(QByteArray bytes, const QByteArray &other, QRandomGenerator &rng)
{
    for (int n = 1 + int(rng.bounded(3)); n > 0; --n) {
        const auto at = [&](qsizetype size) { return qsizetype(rng.bounded(quint32(size + 1))); };
        switch (rng.bounded(6)) {
        case 0:
            if (!bytes.isEmpty())
                bytes[at(bytes.size() - 1)] ^= char(1 << rng.bounded(8));
            break;
        case 1: bytes.truncate(at(bytes.size())); break;
        case 2: {
            const qsizetype from = at(bytes.size());
            bytes.insert(from, bytes.mid(from, at(bytes.size() - from)));
            break;
        }
        case 3: bytes = bytes.first(at(bytes.size())) + other.sliced(at(other.size())); break;
        case 4: bytes.insert(at(bytes.size()), rng.bounded(2) ? messageEnd : '|'); break;
        default: {
            QByteArray noise(qsizetype(rng.bounded(24)), Qt::Uninitialized);
            for (char &c : noise)
                c = char(rng.bounded(256));
            bytes.insert(at(bytes.size()), noise);
        }
        }
    }
    return bytes;
}

// A message anyone downstream may use as it is: coordinates finite and in
// range, at most three darts, a match that has a format.
inline bool isSane(const NetMessage &message)
{
    auto ok = [](const PicturePos &p) {
        return std::isfinite(p.left) && std::isfinite(p.top)
               && std::abs(p.left) <= pictureCoordinateLimit && std::abs(p.top) <= pictureCoordinateLimit;
    };
    if (const auto *bull = std::get_if<BullMessage>(&message))
        return ok(bull->dart);
    if (const auto *set = std::get_if<SetMessage>(&message))
        return set->darts.size() <= 3 && std::all_of(set->darts.cbegin(), set->darts.cend(), ok);
    if (const auto *match = std::get_if<MatchMessage>(&message))
        return formatFromWire(match->sets, match->legs).has_value();
    return true;
}

// Feeds one random stream, valid or damaged, in random pieces to a fresh
// decoder and returns what went wrong (empty when nothing did). A valid
// stream must come back as the messages sent; any stream must keep the
// pending bytes within the limit and give no more messages than terminators
// and no insane message.
inline QString fuzzOnce(QRandomGenerator &rng)
{
    QList<NetMessage> sent;
    QByteArray bytes;
    for (int i = 1 + int(rng.bounded(6)); i > 0; --i) {
        const NetMessage m = randomMessage(rng);
        sent << afterWire(m);
        bytes += encodeMessage(m);
    }
    const int kind = int(rng.bounded(4));
    if (kind == 1)
        bytes = mutated(bytes, encodeMessage(randomMessage(rng)), rng);
    else if (kind == 2)
        bytes = mutated(encodeMessage(randomMessage(rng)), bytes, rng)
                + QByteArray(qsizetype(rng.bounded(200)), messageEnd);
    else if (kind == 3) {
        bytes = mutated(bytes, bytes, rng);
        bytes.insert(qsizetype(rng.bounded(quint32(bytes.size() + 1))), QByteArray(300, 'X'));
    }
    // A small limit now and then, so overflow and its recovery are run too.
    MessageDecoder decoder(rng.bounded(4) == 0 ? 64 : MessageDecoder::defaultPendingLimit);
    QList<NetMessage> got;
    for (const QByteArray &piece : randomPieces(bytes, rng)) {
        got += decoder.feed(piece);
        if (decoder.pendingSize() > decoder.pendingLimit())
            return QStringLiteral("pending bytes beyond the limit");
    }
    if (got.size() > bytes.count(messageEnd))
        return QStringLiteral("more messages than terminators");
    if (!std::all_of(got.cbegin(), got.cend(), isSane))
        return QStringLiteral("a decoded coordinate out of range or too many darts");
    if (kind == 0 && !decoder.overflowed() && got != sent)
        return QStringLiteral("a valid stream did not decode to the messages sent: ")
               + QString::fromUtf8(bytes.toPercentEncoding());
    return {};
}

} // namespace tavrix::samples
