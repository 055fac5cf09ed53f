#pragma once

// The program's one stored setting, "Units", kept per user through QSettings
// under organization "Halvern" and application "Tavrix!".

#include <QString>

namespace tavrix {

inline constexpr const char *settingsOrganization = "Halvern";
inline constexpr const char *settingsApplication = "Tavrix!";
inline constexpr const char *unitsSetting = "Units";

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

} // namespace tavrix
