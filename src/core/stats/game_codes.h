#pragma once

// The option codes of a game as the database stores them: each is the 1-based
// position of the option the player chose.

namespace tavrix {

enum class GameType { None = 0, Cricket = 1, X01_301 = 2, X01_501 = 3 };
enum class OpponentKind { None = 0, Computer = 1, Human = 2 };
enum class SkillLevel { None = 0, BPlayer = 1, APlayer = 2, Master = 3, You = 4 };

inline constexpr int code(GameType type) { return static_cast<int>(type); }
inline constexpr int code(OpponentKind kind) { return static_cast<int>(kind); }
inline constexpr int code(SkillLevel level) { return static_cast<int>(level); }

inline constexpr bool isX01(GameType type)
{
    return type == GameType::X01_301 || type == GameType::X01_501;
}

} // namespace tavrix
