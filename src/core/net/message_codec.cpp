#include "core/net/message_codec.h"

#include "core/games/match_play.h"
#include "core/players/player_names.h"

#include <QStringList>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace tavrix {

namespace {

QByteArray withoutTerminator(const QString &text)
{
    QByteArray bytes = text.toUtf8();
    bytes.removeIf([](char c) { return c == messageEnd; });
    return bytes;
}

QByteArray checkBoxText(bool checked) { return checked ? "1" : "0"; }

QByteArray frame(const char *command, char separator, const QList<QByteArray> &fields)
{
    QByteArray bytes(command);
    if (!fields.isEmpty()) {
        bytes += separator;
        bytes += fields.join('|');
    }
    bytes += messageEnd;
    return bytes;
}

struct Encoder {
    QByteArray operator()(const HelloMessage &m) const
    {
        // The blank follows HEL even for an empty name.
        return "HEL " + withoutTerminator(m.name) + messageEnd;
    }
    QByteArray operator()(const GameMessage &m) const
    {
        switch (m.game) {
        case NetGame::Cricket:
            return frame("GAM", ' ', {"CRI", m.simple ? "True" : "False"});
        case NetGame::Game301:
            return frame("GAM", ' ', {"301", checkBoxText(m.doubleIn), checkBoxText(m.doubleOut)});
        case NetGame::Game501:
            return frame("GAM", ' ', {"501", checkBoxText(m.doubleIn), checkBoxText(m.doubleOut)});
        case NetGame::Other:
            break;
        }
        return {};
    }
    QByteArray operator()(const BullMessage &m) const
    {
        return frame("BUL", '|', {coordinateText(m.dart.left), coordinateText(m.dart.top)});
    }
    QByteArray operator()(const SetMessage &m) const
    {
        QList<QByteArray> fields;
        for (const PicturePos &dart : m.darts.first(std::min<qsizetype>(m.darts.size(), 3))) {
            fields << coordinateText(dart.left) << coordinateText(dart.top);
        }
        return frame("SET", '|', fields);
    }
    QByteArray operator()(const BullOkMessage &) const { return frame("BOK", '|', {}); }
    QByteArray operator()(const PlayAgainMessage &) const { return frame("PLA", '|', {}); }
    QByteArray operator()(const QuitMessage &) const { return frame("QUI", '|', {}); }
    QByteArray operator()(const RemarkMessage &m) const
    {
        // "REM|" even for an empty line, which the peer then ignores.
        return "REM|" + withoutTerminator(m.text) + messageEnd;
    }
    QByteArray operator()(const MatchMessage &m) const
    {
        if (!formatFromWire(m.sets, m.legs))
            return {};
        return frame("MAT", '|', {QByteArray::number(m.sets), QByteArray::number(m.legs)});
    }
    QByteArray operator()(const MatchOkMessage &) const { return frame("MOK", '|', {}); }
    QByteArray operator()(const IgnoredMessage &) const { return {}; }
};

// Blanks (only blanks) off both ends.
QStringView trimBlanks(QStringView text)
{
    qsizetype from = 0;
    qsizetype to = text.size();
    while (from < to && text[from] == u' ')
        ++from;
    while (to > from && text[to - 1] == u' ')
        --to;
    return text.sliced(from, to - from);
}

// The first `count` characters (not UTF-16 units: a letter outside the
// Basic Multilingual Plane counts once and is never cut in half).
QStringView firstCharacters(QStringView text, qsizetype count)
{
    qsizetype units = 0;
    for (qsizetype seen = 0; units < text.size() && seen < count; ++seen)
        units += text[units].isHighSurrogate() && units + 1 < text.size() && text[units + 1].isLowSurrogate() ? 2 : 1;
    return text.first(units);
}

// At most `count` characters of `text`, each that would break the line a
// blank. Only the characters kept are looked at, so a megabyte costs no
// more than a line.
QString oneLine(QStringView text, qsizetype count)
{
    QString line = firstCharacters(text, count).toString();
    for (QChar &c : line) {
        if (breaksLine(c))
            c = u' ';
    }
    return line;
}

class FieldReader
{
public:
    FieldReader(const QString &command, const QStringList &fields)
        : command_(command), fields_(fields)
    {
    }

    IgnoredMessage ignored(IgnoreReason reason) const { return {command_, reason}; }

    // Reads a coordinate into `out`; on failure returns the reason.
    std::optional<IgnoreReason> coordinate(qsizetype i, float &out) const
    {
        bool ok = false;
        const double v = fields_[i].toDouble(&ok); // "." always, whatever the locale
        if (!ok)
            return IgnoreReason::NotANumber;
        if (!std::isfinite(v) || std::abs(v) > pictureCoordinateLimit)
            return IgnoreReason::OutOfRange;
        out = float(v);
        return std::nullopt;
    }

    // A whole number.
    std::optional<IgnoreReason> number(qsizetype i, int &out) const
    {
        bool ok = false;
        out = fields_[i].toInt(&ok);
        if (!ok)
            return IgnoreReason::NotANumber;
        return std::nullopt;
    }

    std::optional<IgnoreReason> checkBox(qsizetype i, bool &out) const
    {
        int v = 0;
        if (auto bad = number(i, v))
            return bad;
        if (v != 0 && v != 1)
            return IgnoreReason::OutOfRange;
        out = v == 1;
        return std::nullopt;
    }

private:
    QString command_;
    const QStringList &fields_;
};

NetMessage decodeGame(const FieldReader &read, const QStringList &fields)
{
    if (fields.isEmpty())
        return read.ignored(IgnoreReason::MissingField);
    GameMessage m;
    const QString &game = fields[0];
    if (game == u"CRI") {
        if (fields.size() < 2)
            return read.ignored(IgnoreReason::MissingField);
        m.game = NetGame::Cricket;
        m.simple = fields[1].trimmed().compare(u"true", Qt::CaseInsensitive) == 0;
    } else if (game == u"301" || game == u"501") {
        if (fields.size() < 3)
            return read.ignored(IgnoreReason::MissingField);
        m.game = game == u"301" ? NetGame::Game301 : NetGame::Game501;
        if (auto bad = read.checkBox(1, m.doubleIn))
            return read.ignored(*bad);
        if (auto bad = read.checkBox(2, m.doubleOut))
            return read.ignored(*bad);
    }
    return m;
}

NetMessage decodeSet(const FieldReader &read, const QStringList &fields)
{
    if (fields.size() > 6)
        return read.ignored(IgnoreReason::TooManyFields);
    if (fields.size() % 2 != 0)
        return read.ignored(IgnoreReason::MissingField);
    SetMessage m;
    for (qsizetype i = 0; i < fields.size(); i += 2) {
        PicturePos dart;
        if (auto bad = read.coordinate(i, dart.left))
            return read.ignored(*bad);
        if (auto bad = read.coordinate(i + 1, dart.top))
            return read.ignored(*bad);
        m.darts << dart;
    }
    return m;
}

// Fields beyond the two are not read, as other commands ignore theirs.
NetMessage decodeMatch(const FieldReader &read, const QStringList &fields)
{
    if (fields.size() < 2)
        return read.ignored(IgnoreReason::MissingField);
    MatchMessage m;
    if (auto bad = read.number(0, m.sets))
        return read.ignored(*bad);
    if (auto bad = read.number(1, m.legs))
        return read.ignored(*bad);
    if (!formatFromWire(m.sets, m.legs))
        return read.ignored(IgnoreReason::OutOfRange);
    return m;
}

// No command reads more than six fields; a seventh tells SET it has too many.
// Splitting no further keeps a frame of millions of "|" from becoming
// millions of strings.
QStringList leadingFields(QStringView text)
{
    constexpr qsizetype enough = 7;
    QStringList fields;
    for (qsizetype from = 0; fields.size() < enough;) {
        const qsizetype bar = text.indexOf(u'|', from);
        fields << text.sliced(from, (bar < 0 ? text.size() : bar) - from).toString();
        if (bar < 0)
            break;
        from = bar + 1;
    }
    return fields;
}

} // namespace

QByteArray coordinateText(float value)
{
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, value);
    return QByteArray(text, result.ptr - text);
}

QByteArray encodeMessage(const NetMessage &message) { return std::visit(Encoder{}, message); }

QString peerName(QStringView sent)
{
    // Leading blanks do not count against the length; control characters
    // turned blank at the ends go with the blanks.
    const QString line = oneLine(trimBlanks(sent), maxPlayerNameLength);
    return trimBlanks(line).toString();
}

QString peerRemark(QStringView sent)
{
    return oneLine(sent, maxRemarkLength);
}

bool isGreeting(const QByteArray &frame)
{
    return frame.startsWith("HEL") && std::holds_alternative<HelloMessage>(decodeFrame(frame));
}

// No message reads this far into its frame: a name or chat line is cut
// long before, and a number this long is no coordinate. Converting no more
// keeps a frame of megabytes from costing its size twice over again.
constexpr qsizetype frameReadLimit = 16 * 1024;

NetMessage decodeFrame(const QByteArray &frameBytes)
{
    // Bad bytes become U+FFFD.
    const QString text = QString::fromUtf8(QByteArrayView(frameBytes).first(std::min(frameBytes.size(), frameReadLimit)));
    const QString command = text.left(3);
    // The fourth character is the separator, skipped whatever it is.
    const QStringList fields = text.size() >= 5 ? leadingFields(QStringView(text).sliced(4)) : QStringList();
    const FieldReader read(command, fields);

    if (command == u"HEL") {
        if (fields.isEmpty())
            return read.ignored(IgnoreReason::MissingField);
        return HelloMessage{peerName(fields[0])};
    }
    if (command == u"GAM")
        return decodeGame(read, fields);
    if (command == u"BUL") {
        if (fields.size() < 2)
            return read.ignored(IgnoreReason::MissingField);
        BullMessage m;
        if (auto bad = read.coordinate(0, m.dart.left))
            return read.ignored(*bad);
        if (auto bad = read.coordinate(1, m.dart.top))
            return read.ignored(*bad);
        return m;
    }
    if (command == u"SET")
        return decodeSet(read, fields);
    if (command == u"BOK")
        return BullOkMessage{};
    if (command == u"PLA")
        return PlayAgainMessage{};
    if (command == u"QUI")
        return QuitMessage{};
    if (command == u"REM") {
        if (fields.isEmpty())
            return read.ignored(IgnoreReason::MissingField);
        return RemarkMessage{peerRemark(fields[0])};
    }
    if (command == u"MAT")
        return decodeMatch(read, fields);
    if (command == u"MOK")
        return MatchOkMessage{};
    return read.ignored(command == u"BYE" ? IgnoreReason::Bye : IgnoreReason::UnknownCommand);
}

MessageDecoder::MessageDecoder(qsizetype pendingLimit) : limit_(std::max<qsizetype>(pendingLimit, 1)) {}

QList<NetMessage> MessageDecoder::feed(const QByteArray &bytes)
{
    QList<NetMessage> messages;
    qsizetype from = 0;
    if (skipping_) {
        const qsizetype end = bytes.indexOf(messageEnd);
        if (end < 0)
            return messages;
        messages << IgnoredMessage{skippedCommand_, IgnoreReason::Oversized};
        skipping_ = false;
        from = end + 1;
    }
    pending_.append(bytes.sliced(from));

    qsizetype start = 0;
    for (qsizetype end = pending_.indexOf(messageEnd, scanned_); end >= 0;
         end = pending_.indexOf(messageEnd, start)) {
        messages << decodeFrame(pending_.sliced(start, end - start));
        start = end + 1;
    }
    pending_.remove(0, start);
    scanned_ = pending_.size();

    if (pending_.size() > limit_) {
        overflowed_ = true;
        skipping_ = true;
        skippedCommand_ = QString::fromUtf8(pending_.first(3));
        pending_.clear();
        scanned_ = 0;
    }
    return messages;
}

void MessageDecoder::reset()
{
    pending_.clear();
    scanned_ = 0;
    overflowed_ = false;
    skipping_ = false;
    skippedCommand_.clear();
}

} // namespace tavrix
