#pragma once

// What a game over the network adds to a game at one board, without sockets
// or widgets: the options as the game message carries them, where a dart
// sent as a marker position lands, and the texts shown while one copy waits
// for the other.

#include "core/games/game_session.h"
#include "core/net/message_codec.h"

namespace tavrix {

// The game message for the options of a game; NetGame::Other for none.
GameMessage gameMessageOf(const GameOptions &options);
// The options after a game message: its game and the options it carries;
// the rest as they were. A message of another game changes nothing.
GameOptions optionsAfter(const GameOptions &options, const GameMessage &message);

// The board position of a dart whose flight marker stands at `pos`, and the
// marker's place for a dart at a board position.
BoardPoint dartAtMarker(PicturePos pos);
PicturePos markerPosOf(BoardPoint at);

QString corkWaitText(const QString &name);
QString turnWaitText(const QString &name);
QString okWaitText(const QString &name);
QString standByText();
QString playAgainConsentText(const QString &name);
QString quitTitle(const QString &name);
// What the side left behind is told when the other quit: the server sets up
// the next game, the client waits for it.
QString quitText(const QString &name, NetRole role);
QString disconnectedText(const QString &name);
// The connection was ended because the other side sent more than the
// decoder holds without ending a message.
QString floodedText(const QString &name);
// The connection was ended because the other side sent messages faster than
// they could be handled, more than `count` waiting at once.
QString overwhelmedText(const QString &name, int count);

} // namespace tavrix
