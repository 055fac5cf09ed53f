#include "core/export/darts_csv.h"

#include "core/advice/aim_spread.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <array>
#include <charconv>
#include <cmath>

namespace tavrix {

namespace {

// Rows between two reports of progress, and bytes gathered before a write.
constexpr qint64 rowsPerReport = 16384;
constexpr qsizetype bytesPerWrite = 1 << 20;

void appendText(QByteArray &out, QByteArrayView text)
{
    bool quoted = false;
    for (const char c : text) {
        if (c == ',' || c == '"' || c == '\n' || c == '\r') {
            quoted = true;
            break;
        }
    }
    if (!quoted) {
        out.append(text);
        return;
    }
    out.append('"');
    for (const char c : text) {
        if (c == '"')
            out.append('"');
        out.append(c);
    }
    out.append('"');
}

void appendWhole(QByteArray &out, qint64 value)
{
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    out.append(digits, end - digits);
}

void appendField(QByteArray &out, const StoredField &field)
{
    if (field.isInteger())
        appendWhole(out, *field.whole);
    else
        appendText(out, field.text);
}

// Two decimals with a point, rounded half away from zero; a value that
// rounds to zero has no sign. Whole hundredths are written as an integer:
// to_chars of a double with a precision costs several times as much.
void appendMillimetres(QByteArray &out, double value)
{
    if (!std::isfinite(value) || std::abs(value) > 1e15)
        return;
    const qint64 hundredths = std::llround(value * 100);
    if (hundredths < 0)
        out.append('-');
    const qint64 magnitude = hundredths < 0 ? -hundredths : hundredths;
    appendWhole(out, magnitude / 100);
    const int cents = int(magnitude % 100);
    const char decimals[3] = {'.', char('0' + cents / 10), char('0' + cents % 10)};
    out.append(decimals, 3);
}

// SQLite keeps "2026-11-22 21:05:09"; ISO 8601 puts a T between date and
// time. A date stored in any other form is written as it is.
void appendDate(QByteArray &out, QByteArrayView stored)
{
    if (stored.size() == 19 && stored[10] == ' ') {
        out.append(stored.first(10));
        out.append('T');
        out.append(stored.sliced(11));
        return;
    }
    appendText(out, stored);
}

// Game darts are stored 0 to 2 in their set, the cork dart (set 0) as 1;
// practice darts 0 to 2. The file counts from 1.
void appendPlace(QByteArray &out, const ExportDart &dart)
{
    if (!dart.dart.whole) {
        appendField(out, dart.dart);
        return;
    }
    const bool cork = !dart.practice && dart.set.whole == 0;
    appendWhole(out, cork ? *dart.dart.whole : *dart.dart.whole + 1);
}

std::optional<int> smallWhole(const StoredField &field)
{
    if (!field.whole || *field.whole < -1000000 || *field.whole > 1000000)
        return std::nullopt;
    return int(*field.whole);
}

// aimOfTarget, worked out once for each target a row can name: the
// numbers 0 to 60 and the rings 0 to 7 (the bull's codes 25 and 50 among
// them); any other target is worked out each time.
using Aim = std::optional<std::pair<BoardPoint, AimClass>>;
Aim aimFor(int value, int ring)
{
    static const auto table = [] {
        std::array<std::array<Aim, 8>, 61> aims{};
        for (int v = 0; v <= 60; ++v)
            for (int r = 0; r < 8; ++r)
                aims[v][r] = aimOfTarget(v, r);
        return aims;
    }();
    if (value >= 0 && value <= 60 && ring >= 0 && ring < 8)
        return table[value][ring];
    return aimOfTarget(value, ring);
}

} // namespace

void appendDartRow(QByteArray &out, const ExportDart &dart)
{
    appendText(out, dart.player);
    out.append(dart.practice ? ",practice," : ",game,");
    appendDate(out, dart.date);
    out.append(',');
    appendField(out, dart.game);
    out.append(',');
    appendField(out, dart.set);
    out.append(',');
    appendPlace(out, dart);
    out.append(',');
    appendField(out, dart.targetScore);
    out.append(',');
    appendField(out, dart.targetRing);
    out.append(',');

    const std::optional<int> value = smallWhole(dart.targetScore);
    const std::optional<int> ring = smallWhole(dart.targetRing);
    const Aim aim = value && ring ? aimFor(*value, *ring) : std::nullopt;
    if (aim) {
        appendMillimetres(out, aim->first.x * mmPerUnit);
        out.append(',');
        appendMillimetres(out, aim->first.y * mmPerUnit);
    } else {
        out.append(',');
    }
    out.append(',');
    if (dart.x)
        appendMillimetres(out, *dart.x * mmPerUnit);
    out.append(',');
    if (dart.y)
        appendMillimetres(out, *dart.y * mmPerUnit);
    out.append(',');
    if (aim && dart.x && dart.y)
        appendMillimetres(out, std::hypot(*dart.x - aim->first.x, *dart.y - aim->first.y) * mmPerUnit);
    out.append(',');
    appendField(out, dart.score);
    out.append(',');
    appendField(out, dart.ring);
    out.append("\r\n");
}

ExportOutcome exportDartsCsv(DartExport &store, std::optional<qint64> playerId, const QString &path,
                             const ExportProgress &progress)
{
    ExportOutcome outcome;
    const QString file = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    const std::optional<qint64> total = store.exportDartCount(playerId);
    if (!total) {
        outcome.error = store.lastError();
        return outcome;
    }
    // Written beside the file under a name of its own, and put in its place
    // by commit() only when complete.
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly)) {
        outcome.error = QStringLiteral("Cannot write %1: %2").arg(file, out.errorString());
        return outcome;
    }
    QByteArray buffer;
    buffer.reserve(bytesPerWrite + 4096);
    buffer.append(dartsCsvHeader);
    buffer.append("\r\n");
    bool writeFailed = false;
    auto flush = [&] {
        if (!writeFailed && out.write(buffer) != buffer.size())
            writeFailed = true;
        buffer.clear();
        return !writeFailed;
    };
    bool cancelled = progress && !progress(0, *total);
    const bool read = cancelled || store.readExportDarts(playerId, [&](const ExportDart &dart) {
        appendDartRow(buffer, dart);
        ++outcome.rows;
        if (buffer.size() >= bytesPerWrite && !flush())
            return false;
        if (progress && outcome.rows % rowsPerReport == 0 && !progress(outcome.rows, *total)) {
            cancelled = true;
            return false;
        }
        return true;
    });
    if (cancelled) {
        out.cancelWriting();
        outcome.end = ExportEnd::Cancelled;
        return outcome;
    }
    if (!read) {
        out.cancelWriting();
        outcome.error = store.lastError();
        return outcome;
    }
    if (!flush() || !out.commit()) {
        outcome.error = QStringLiteral("Cannot write %1: %2").arg(file, out.errorString());
        return outcome;
    }
    if (progress)
        progress(outcome.rows, outcome.rows);
    outcome.end = ExportEnd::Written;
    return outcome;
}

} // namespace tavrix
