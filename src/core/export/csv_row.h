#pragma once

// One recorded dart as a line of CSV (RFC 4180: fields quoted where they
// hold a comma, a quote or a line break, the line ending in CR LF). Numbers
// use "." whatever the locale. Positions are millimetres from the bull's
// centre, x to the right and y upwards; the aiming point is the one review
// takes for the target (aimOfTarget), and the miss the distance from it.

#include "core/stats/dart_export.h"

#include <QByteArray>

namespace tavrix {

inline constexpr char dartsCsvHeader[] = "player,mode,date,game,set,dart,target_score,target_ring,"
                                         "aim_x_mm,aim_y_mm,x_mm,y_mm,miss_mm,score,ring";

// Appends the dart's row, line break included.
void appendDartRow(QByteArray &out, const ExportDart &dart);

} // namespace tavrix
