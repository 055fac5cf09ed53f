#include "core/startup/settings.h"

#include <QSettings>

#include <memory>

namespace tavrix {

namespace {

std::unique_ptr<QSettings> openSettings()
{
    return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                       QString::fromLatin1(settingsOrganization),
                                       QString::fromLatin1(settingsApplication));
}

} // namespace

QString getSetting(const QString &name)
{
    const auto settings = openSettings();
    if (settings->status() != QSettings::NoError)
        return {};
    return settings->value(name).toString();
}

void saveSetting(const QString &name, const QString &value)
{
    const auto settings = openSettings();
    if (settings->status() != QSettings::NoError || !settings->isWritable())
        return;
    settings->setValue(name, value);
    settings->sync();
}

void createDefaultSettings()
{
    saveSetting(QString::fromLatin1(unitsSetting), QStringLiteral("in"));
}

bool settingsStored()
{
    return openSettings()->contains(QString::fromLatin1(unitsSetting));
}

QString settingsFilePath()
{
    return openSettings()->fileName();
}

bool unitsAreCentimetres(const QString &units)
{
    return units == QLatin1String("cm");
}

bool soundIsOn(const QString &sound)
{
    return sound != QLatin1String("off");
}

std::optional<int> optionFromSetting(const QString &stored, int count)
{
    return numberFromSetting(stored, 1, count);
}

std::optional<int> numberFromSetting(const QString &stored, int lowest, int highest)
{
    // Written back and compared as text, so " 2", "02" and "+2" are not 2.
    bool ok = false;
    const int number = stored.toInt(&ok);
    if (!ok || number < lowest || number > highest || QString::number(number) != stored)
        return std::nullopt;
    return number;
}

std::optional<bool> switchFromSetting(const QString &stored)
{
    if (stored == QLatin1String("on"))
        return true;
    if (stored == QLatin1String("off"))
        return false;
    return std::nullopt;
}

} // namespace tavrix
