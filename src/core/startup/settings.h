#pragma once

// The program's stored settings, "Units", "Sound" and the last game choices,
// kept per user through QSettings under organization "Halvern" and
// application "Tavrix!".

#include <QString>

#include <optional>

namespace tavrix {

inline constexpr const char *settingsOrganization = "Halvern";
inline constexpr const char *settingsApplication = "Tavrix!";
inline constexpr const char *unitsSetting = "Units";
// "off" silences the sound effects; they play when it is missing.
inline constexpr const char *soundSetting = "Sound";
// The play set-up as last chosen: the 1-based position of the chosen game,
// opponent, skill and Cricket rules, and "on" or "off" for "Keep Target Stats".
inline constexpr const char *gameSetting = "Game";
inline constexpr const char *opponentSetting = "Opponent";
inline constexpr const char *skillSetting = "Skill";
inline constexpr const char *cricketOptionsSetting = "CricketOptions";
inline constexpr const char *keepStatsSetting = "KeepTargetStats";
// The match set-up as last chosen: the 1-based position in the format list
// ("Single game", "Legs", "Sets"), the legs and the sets, as numbers.
inline constexpr const char *matchFormatSetting = "MatchFormat";
inline constexpr const char *matchLegsSetting = "MatchLegs";
inline constexpr const char *matchSetsSetting = "MatchSets";
// "on" shows the map of where to aim in review.
inline constexpr const char *aimMapSetting = "AimMap";

// The stored value as text; "" when it is missing or the store cannot be read.
QString getSetting(const QString &name);
// Writes the value when the store can be written; does nothing otherwise.
void saveSetting(const QString &name, const QString &value);
// Writes the defaults ("Units" = "in").
void createDefaultSettings();
// True once the defaults have been written (a first start has none).
bool settingsStored();
// The file the settings are kept in (it may not exist yet).
QString settingsFilePath();
// "cm" selects centimetres; anything else, including "CM" and "", inches.
bool unitsAreCentimetres(const QString &units);
bool soundIsOn(const QString &sound);
// A stored option position: exactly one of "1" to `count`, or nothing.
std::optional<int> optionFromSetting(const QString &stored, int count);
// A stored number: exactly the text of one of `lowest` to `highest`, or nothing.
std::optional<int> numberFromSetting(const QString &stored, int lowest, int highest);
// A stored switch: exactly "on" or "off", or nothing.
std::optional<bool> switchFromSetting(const QString &stored);

} // namespace tavrix
