#pragma once

// An SQLite statement's current row as a row source of the shared decoders
// (store_rows.h): SQLite's own typed column calls, inlined.

#include "core/stats/sqlite_handle.h"
#include "core/stats/statistics_rows.h"

#include <sqlite3.h>

namespace tavrix {

class SqliteRow {
public:
    explicit SqliteRow(sqlite3_stmt *statement) : statement_(statement) {}
    qint64 int64(int column) const { return sqlite3_column_int64(statement_, column); }
    int int32(int column) const { return sqlite3_column_int(statement_, column); }
    double real(int column) const { return sqlite3_column_double(statement_, column); }
    std::optional<qint64> seconds(int column) const { return storedSeconds(statement_, column); }
    char letter(int column) const
    {
        const unsigned char *text = sqlite3_column_text(statement_, column);
        return text && text[0] != 0 && text[1] == 0 ? char(text[0]) : 0;
    }

private:
    sqlite3_stmt *statement_;
};

// Runs one statement with the player's id, handing each row to `take`;
// SQLITE_DONE when every row was read.
template <typename Take>
int readRows(sqlite3 *handle, const char *text, qint64 playerId, Take take)
{
    sqlite3_stmt *statement = nullptr;
    int code = sqlite3_prepare_v2(handle, text, -1, &statement, nullptr);
    if (code == SQLITE_OK)
        code = sqlite3_bind_int64(statement, 1, playerId);
    if (code == SQLITE_OK) {
        while ((code = sqlite3_step(statement)) == SQLITE_ROW)
            take(SqliteRow(statement));
    }
    sqlite3_finalize(statement);
    return code;
}

} // namespace tavrix
