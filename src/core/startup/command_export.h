#pragma once

// `tavrix --export-csv FILE [--player NAME]`: the recorded darts written into
// a CSV file without a window, from the statistics file the program would
// open. A statistics file that is not there is not made.

#include "core/startup/start_options.h"

namespace tavrix {

// Exports as `options` asks from the statistics file at `databasePath`: a
// line on standard output and exit code 0 when written; a line on standard
// error and exit code 1 when the file is missing or cannot be read, the
// player does not exist, or the CSV file cannot be written.
OptionOutput runCommandExport(const StartOptions &options, const QString &databasePath);

} // namespace tavrix
