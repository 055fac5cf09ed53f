#pragma once

// The messages two connected copies of the program exchange during a game,
// their bytes on the wire, and a stream decoder that turns arriving bytes
// back into messages. Pure code: no sockets, no widgets.
//
// A message is a three-letter command, one separator character (a blank for
// HEL and GAM, "|" for the others; the receiver skips it whatever it is),
// fields joined by "|", and the terminator byte 3. Text is UTF-8; numbers use
// "." as decimal separator whatever the locale, so two machines with
// different settings understand each other.

#include <QByteArray>
#include <QList>
#include <QString>

#include <variant>

namespace tavrix {

// Ends every message on the wire.
inline constexpr char messageEnd = '\x03';

// A marker picture's left and top edge, in pixels of the 520 x 520 board
// picture. Sent as single-precision values.
struct PicturePos {
    float left = 0;
    float top = 0;
    bool operator==(const PicturePos &) const = default;
};

// Positions further than this from the picture's corner are not believed:
// the decoder reports them as OutOfRange instead of handing them on.
inline constexpr double pictureCoordinateLimit = 4000.0;

// HEL: the sender's player name, once decoded held to the rules of a name
// typed at this board (see peerName).
struct HelloMessage {
    QString name;
    bool operator==(const HelloMessage &) const = default;
};

enum class NetGame { Cricket, Game301, Game501, Other };

// GAM: the game and its options. `simple` belongs to Cricket, the two double
// options to 301 and 501. A GAM naming another game still restarts the game
// on the receiver, with its options unchanged; it is never sent.
struct GameMessage {
    NetGame game = NetGame::Other;
    bool simple = false;
    bool doubleIn = false;
    bool doubleOut = false;
    bool operator==(const GameMessage &) const = default;
};

// BUL: the position of the sender's cork dart.
struct BullMessage {
    PicturePos dart;
    bool operator==(const BullMessage &) const = default;
};

// SET: the sender's darts of one turn, none to three, in marker order.
struct SetMessage {
    QList<PicturePos> darts;
    bool operator==(const SetMessage &) const = default;
};

// BOK, PLA, QUI: no fields.
struct BullOkMessage {
    bool operator==(const BullOkMessage &) const = default;
};
struct PlayAgainMessage {
    bool operator==(const PlayAgainMessage &) const = default;
};
struct QuitMessage {
    bool operator==(const QuitMessage &) const = default;
};

// REM: one chat line. A text holding "|" arrives cut at the first "|"; once
// decoded it is held to one line of sane length (see peerRemark).
struct RemarkMessage {
    QString text;
    bool operator==(const RemarkMessage &) const = default;
};

// MAT: the match the server proposes, sent right after GAM: sets to win (1
// outside a set match) and legs to win the match or each set (1 in a single
// game), as wireFormat (core/games/match_play.h) gives them. Only pairs that
// formatFromWire knows are sent or decoded. A copy that does not know MAT
// ignores it, and never answers.
struct MatchMessage {
    int sets = 1;
    int legs = 1;
    bool operator==(const MatchMessage &) const = default;
};

// MOK: the client plays the match proposed. No fields.
struct MatchOkMessage {
    bool operator==(const MatchOkMessage &) const = default;
};

enum class IgnoreReason {
    Bye,            // BYE: accepted and ignored
    UnknownCommand,
    MissingField,   // too few fields for the command (an odd count for SET)
    NotANumber,
    OutOfRange,     // a coordinate beyond the limit, a check box not 0 or 1, or
                    // sets and legs that make no match
    TooManyFields,  // SET with more than three pairs
    Oversized,      // a frame longer than the decoder's pending limit
};

// Anything the receiver does nothing with. `command` is the frame's first
// three characters.
struct IgnoredMessage {
    QString command;
    IgnoreReason reason = IgnoreReason::UnknownCommand;
    bool operator==(const IgnoredMessage &) const = default;
};

// Visits a message with one handler a kind:
// std::visit(Overloaded{[](const HelloMessage &) {...}, ...}, message).
template <class... Ts>
struct Overloaded : Ts... {
    using Ts::operator()...;
};
template <class... Ts>
Overloaded(Ts...) -> Overloaded<Ts...>;

using NetMessage = std::variant<HelloMessage, GameMessage, BullMessage, BullOkMessage, SetMessage,
                                PlayAgainMessage, QuitMessage, RemarkMessage, MatchMessage, MatchOkMessage,
                                IgnoredMessage>;

// The bytes of one message, terminator included. Names and chat text lose any
// character of code 3, which would end the message early; nothing else is
// escaped. Empty for what is never sent: an IgnoredMessage, a GameMessage
// of NetGame::Other and a MatchMessage that names no match. A SetMessage
// sends its first three darts.
QByteArray encodeMessage(const NetMessage &message);

// One message from the bytes of one frame, without its terminator.
NetMessage decodeFrame(const QByteArray &frame);

// Whether a frame (without its terminator) is a greeting with a name: what a
// caller must send before anything else.
bool isGreeting(const QByteArray &frame);

// The longest chat line kept from the other side, in characters.
inline constexpr int maxRemarkLength = 500;

// A name from the other side as this side keeps and shows it: held to the
// rules of a name typed here. Line breaks and other control characters
// become blanks, blanks at the ends go, and it is cut to
// maxPlayerNameLength characters. Whatever the peer sends, the name costs
// little to lay out and fits where a local name fits.
QString peerName(QStringView sent);
// A chat line from the other side: control characters become blanks, so it
// stays one line, and it is cut to maxRemarkLength characters.
QString peerRemark(QStringView sent);

// A coordinate as it is written on the wire: the shortest text that reads
// back as the same single-precision value, "." as separator, a whole number
// without a decimal point.
QByteArray coordinateText(float value);

// Splits a byte stream into messages. Bytes after the last terminator wait
// for the next feed; frames are cut on the byte 3, which no UTF-8 multi-byte
// sequence contains, so a character split between two feeds decodes whole.
class MessageDecoder
{
public:
    static constexpr qsizetype defaultPendingLimit = 4 * 1024 * 1024;

    explicit MessageDecoder(qsizetype pendingLimit = defaultPendingLimit);

    // Appends the bytes and returns the messages they complete, in order.
    // When the unterminated rest grows beyond the pending limit it is dropped,
    // overflowed() turns true, and the bytes up to the next terminator are
    // skipped; that frame then comes out as one Oversized IgnoredMessage.
    QList<NetMessage> feed(const QByteArray &bytes);

    // The peer sent more than the limit without a terminator: stays true until
    // reset(), so the caller can end the connection.
    bool overflowed() const { return overflowed_; }
    // Bytes held back waiting for a terminator; never above the limit after a
    // feed.
    qsizetype pendingSize() const { return pending_.size(); }
    qsizetype pendingLimit() const { return limit_; }
    void reset();

private:
    QByteArray pending_;
    qsizetype limit_;
    qsizetype scanned_ = 0; // bytes of pending_ known to hold no terminator
    bool overflowed_ = false;
    bool skipping_ = false;    // dropping the rest of an oversized frame
    QString skippedCommand_;   // that frame's first three characters
};

} // namespace tavrix
