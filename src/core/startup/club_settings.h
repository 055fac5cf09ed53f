#pragma once

// The club database this board remembers: where the club's PostgreSQL
// server is and whether the statistics are kept there. The password is
// never among the settings; it is kept in memory while the program runs,
// or the server's own password file or PGPASSWORD give it.

#include "core/stats/store_address.h"

#include <QString>

#include <optional>

namespace tavrix {

inline constexpr const char *clubHostSetting = "ClubHost";
inline constexpr const char *clubPortSetting = "ClubPort";
inline constexpr const char *clubDatabaseSetting = "ClubDatabase";
inline constexpr const char *clubUserSetting = "ClubUser";
// The name of the TLS mode, as tlsModeName gives it.
inline constexpr const char *clubTlsSetting = "ClubTls";
// "1" while the statistics are kept in the club database, "0" after the
// user went back to the local file.
inline constexpr const char *clubInUseSetting = "ClubInUse";

struct ClubSettings {
    // Without a password, always.
    ServerAddress server;
    bool inUse = false;
    bool operator==(const ClubSettings &) const = default;
};

// What the user chose in "Club Database": the server and the password he
// typed (empty: the password file or PGPASSWORD), or to keep the statistics
// in the local file again.
struct ClubChoice {
    enum Action { Cancelled, UseClub, UseLocalFile };
    Action action = Cancelled;
    ServerAddress server;
    QString password;
};

// The stored club database. A port that is not a number from 1 to 65535
// reads as 5432, a TLS mode without a name as "prefer".
ClubSettings readClubSettings();
// Stores every field but the password, which is dropped.
void saveClubSettings(const ClubSettings &club);
// Only the in-use switch, the fields as they are.
void saveClubInUse(bool inUse);
// Whether `club` names a server that can be asked for: it needs a user. An
// empty host is no gap: it is the server on this computer, reached through
// its local socket.
bool clubIsComplete(const ServerAddress &club);
// The club database the statistics are to be kept in; nothing when the
// local file is in use or the stored club database is not complete.
std::optional<ServerAddress> clubServerInUse();

} // namespace tavrix
