#pragma once

// The program's stored settings, "Units" and "Sound", kept per user through QSettings
// under organization "Halvern" and application "Tavrix!".

#include <QString>

namespace tavrix {

inline constexpr const char *settingsOrganization = "Halvern";
inline constexpr const char *settingsApplication = "Tavrix!";
inline constexpr const char *unitsSetting = "Units";
// "off" silences the sound effects; they play when it is missing.
inline constexpr const char *soundSetting = "Sound";

// The stored value as text; "" when it is missing or the store cannot be read.
QString getSetting(const QString &name);
// Writes the value when the store can be written; does nothing otherwise.
void saveSetting(const QString &name, const QString &value);
// Writes the defaults ("Units" = "in").
void createDefaultSettings();
// True once the defaults have been written (a first start has none).
bool settingsStored();
// "cm" selects centimetres; anything else, including "CM" and "", inches.
bool unitsAreCentimetres(const QString &units);
bool soundIsOn(const QString &sound);

} // namespace tavrix
