#pragma once

// The recorded darts as a CSV file (RFC 4180: UTF-8, a header row, fields
// quoted where they hold a comma, a quote or a line break, lines ending in
// CR LF), one row per dart, for a spreadsheet or another program. Numbers
// use "." whatever the locale. Positions are millimetres from the bull's
// centre, x to the right and y upwards; the aiming point is the one review
// takes for the target (aimOfTarget), and the miss the distance from it.

#include "core/stats/dart_export.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace tavrix {

inline constexpr char dartsCsvHeader[] = "player,mode,date,game,set,dart,target_score,target_ring,"
                                         "aim_x_mm,aim_y_mm,x_mm,y_mm,miss_mm,score,ring";

// Appends the dart's row, line break included.
void appendDartRow(QByteArray &out, const ExportDart &dart);

enum class ExportEnd { Written, Cancelled, Failed };

struct ExportOutcome {
    ExportEnd end = ExportEnd::Failed;
    qint64 rows = 0;
    QString error; // for Failed: what went wrong, naming the file
};

// Told how many darts are written out of how many, before the first and
// then every few thousand; false cancels.
using ExportProgress = std::function<bool(qint64 done, qint64 total)>;

// Writes the player's darts (everybody's when no player is given) into the
// file at `path`, replacing a file there only when the whole file is
// written: a cancelled or failed export leaves what was there before.
ExportOutcome exportDartsCsv(DartExport &store, std::optional<qint64> playerId, const QString &path,
                             const ExportProgress &progress = {});

} // namespace tavrix
