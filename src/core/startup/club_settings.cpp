#include "core/startup/club_settings.h"

#include "core/startup/settings.h"

namespace tavrix {

namespace {

QString stored(const char *name)
{
    return getSetting(QString::fromLatin1(name));
}

void store(const char *name, const QString &value)
{
    saveSetting(QString::fromLatin1(name), value);
}

} // namespace

ClubSettings readClubSettings()
{
    ClubSettings club;
    club.server.host = stored(clubHostSetting);
    club.server.port = numberFromSetting(stored(clubPortSetting), 1, 65535).value_or(ServerAddress::defaultPort);
    club.server.database = stored(clubDatabaseSetting);
    club.server.user = stored(clubUserSetting);
    club.server.tls = tlsModeNamed(stored(clubTlsSetting)).value_or(TlsMode::Prefer);
    club.inUse = stored(clubInUseSetting) == QLatin1String("1");
    return club;
}

void saveClubSettings(const ClubSettings &club)
{
    store(clubHostSetting, club.server.host);
    store(clubPortSetting, QString::number(club.server.port));
    store(clubDatabaseSetting, club.server.database);
    store(clubUserSetting, club.server.user);
    store(clubTlsSetting, tlsModeName(club.server.tls));
    saveClubInUse(club.inUse);
}

void saveClubInUse(bool inUse)
{
    store(clubInUseSetting, inUse ? QStringLiteral("1") : QStringLiteral("0"));
}

bool clubIsComplete(const ServerAddress &club)
{
    return !club.user.trimmed().isEmpty();
}

std::optional<ServerAddress> clubServerInUse()
{
    const ClubSettings club = readClubSettings();
    if (!club.inUse || !clubIsComplete(club.server))
        return std::nullopt;
    return club.server;
}

} // namespace tavrix
