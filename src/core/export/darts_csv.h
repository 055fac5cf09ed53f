#pragma once

// The recorded darts as a CSV file (UTF-8, a header row, then one line per
// dart as csv_row.h writes it), for a spreadsheet or another program.

#include "core/stats/dart_export.h"

#include <QString>

#include <functional>
#include <optional>

namespace tavrix {

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
