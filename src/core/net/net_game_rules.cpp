#include "core/net/net_game_rules.h"

namespace tavrix {

GameMessage gameMessageOf(const GameOptions &options)
{
    switch (options.type) {
    case GameType::Cricket:
        return {NetGame::Cricket, options.simpleCricket, false, false};
    case GameType::X01_301:
        return {NetGame::Game301, false, options.doubleIn, options.doubleOut};
    case GameType::X01_501:
        return {NetGame::Game501, false, options.doubleIn, options.doubleOut};
    default:
        return {};
    }
}

GameOptions optionsAfter(const GameOptions &options, const GameMessage &message)
{
    GameOptions after = options;
    switch (message.game) {
    case NetGame::Cricket:
        after.type = GameType::Cricket;
        after.simpleCricket = message.simple;
        break;
    case NetGame::Game301:
    case NetGame::Game501:
        after.type = message.game == NetGame::Game301 ? GameType::X01_301 : GameType::X01_501;
        after.doubleIn = message.doubleIn;
        after.doubleOut = message.doubleOut;
        break;
    case NetGame::Other:
        break;
    }
    return after;
}

BoardPoint dartAtMarker(PicturePos pos)
{
    const double half = flightMarkerSide / 2.0;
    return boardFromPicture(double(pos.left) + half, double(pos.top) + half);
}

PicturePos markerPosOf(BoardPoint at)
{
    const double half = flightMarkerSide / 2.0;
    return {float(boardCenter + at.x - half), float(boardCenter - at.y - half)};
}

QString corkWaitText(const QString &name)
{
    return QStringLiteral("\n\nWaiting for ") + name + QStringLiteral(" to throw the cork...");
}

QString turnWaitText(const QString &name)
{
    return QStringLiteral("\nWaiting for ") + name + QStringLiteral(" to throw...");
}

QString okWaitText(const QString &name)
{
    return QStringLiteral("\nWaiting for ") + name + QStringLiteral(" to click \"Ok\"...");
}

QString standByText()
{
    return QStringLiteral("\n\nStand By...");
}

QString playAgainConsentText(const QString &name)
{
    return QStringLiteral("\n") + name + QStringLiteral(" wants to play again.\n\nClick \"Play Again\" to consent.");
}

QString quitTitle(const QString &name)
{
    return name + QStringLiteral(" quit!");
}

QString quitText(const QString &name, NetRole role)
{
    return QStringLiteral("\r\n") + name + QStringLiteral(" quit the game abruptly.\r\n\r\n")
           + (role == NetRole::Server ? QStringLiteral("Set up another game, or use chat to sync up.")
                                      : QStringLiteral("Click \"OK\" and stand by...\r\n(you may use chat)"));
}

QString disconnectedText(const QString &name)
{
    return name + QStringLiteral(" disconnected.  Click \"Quit Game\".");
}

namespace {

QString otherCopy(const QString &name)
{
    return name.isEmpty() ? QStringLiteral("The other copy of Tavrix") : name + QStringLiteral("'s copy of Tavrix");
}

} // namespace

QString floodedText(const QString &name)
{
    return otherCopy(name) + QStringLiteral(" sent more than 4 MiB without ending a message, so Tavrix closed the "
                                            "connection.");
}

QString overwhelmedText(const QString &name, int count)
{
    return otherCopy(name)
           + QStringLiteral(" sent more than %1 messages faster than Tavrix could handle them, so Tavrix closed "
                            "the connection.").arg(count);
}

} // namespace tavrix
