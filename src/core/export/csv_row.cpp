#include "core/export/csv_row.h"

#include "core/advice/aim_spread.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace tavrix {

namespace {

// Writes a row's fields straight into room reserved for the whole row:
// appending field by field to a QByteArray costs more than reading the row.
class RowWriter {
public:
    explicit RowWriter(char *at) : at_(at) {}
    char *end() const { return at_; }

    void put(char c) { *at_++ = c; }
    void put(QByteArrayView text)
    {
        if (!text.isEmpty())
            std::memcpy(at_, text.data(), size_t(text.size()));
        at_ += text.size();
    }

    // In quotes, its quotes doubled, when it holds a comma, a quote or a
    // line break.
    void text(QByteArrayView text)
    {
        const auto special = [](char c) { return c == ',' || c == '"' || c == '\n' || c == '\r'; };
        if (std::none_of(text.begin(), text.end(), special)) {
            put(text);
            return;
        }
        put('"');
        for (const char c : text) {
            if (c == '"')
                put('"');
            put(c);
        }
        put('"');
    }

    void whole(qint64 value) { at_ = std::to_chars(at_, at_ + 24, value).ptr; }

    void field(const StoredField &field)
    {
        if (field.isInteger())
            whole(*field.whole);
        else
            text(field.text);
    }

    // Two decimals with a point, rounded half away from zero; a value that
    // rounds to zero has no sign. Whole hundredths are written as an
    // integer: to_chars of a double with a precision costs several times as
    // much.
    void millimetres(double value)
    {
        if (!std::isfinite(value) || std::abs(value) > 1e15)
            return;
        const qint64 hundredths = std::llround(value * 100);
        if (hundredths < 0)
            put('-');
        const qint64 magnitude = hundredths < 0 ? -hundredths : hundredths;
        whole(magnitude / 100);
        const int cents = int(magnitude % 100);
        put('.');
        put(char('0' + cents / 10));
        put(char('0' + cents % 10));
    }

    // SQLite keeps "2026-11-22 21:05:09"; ISO 8601 puts a T between date
    // and time. A date stored in any other form is written as it is.
    void date(QByteArrayView stored)
    {
        if (stored.size() == 19 && stored[10] == ' ') {
            put(stored.first(10));
            put('T');
            put(stored.sliced(11));
            return;
        }
        text(stored);
    }

    // Game darts are stored 0 to 2 in their set, the cork dart (set 0) as
    // 1; practice darts 0 to 2. The file counts from 1.
    void place(const ExportDart &dart)
    {
        if (!dart.dart.whole) {
            field(dart.dart);
            return;
        }
        const bool cork = !dart.practice && dart.set.whole == 0;
        whole(cork ? *dart.dart.whole : *dart.dart.whole + 1);
    }

private:
    char *at_;
};

// The most a row can take: every text quoted with each character doubled,
// every number at its longest, the separators and the line break.
qsizetype mostBytes(const ExportDart &dart)
{
    qsizetype texts = dart.player.size() + dart.date.size();
    for (const StoredField *field : {&dart.game, &dart.set, &dart.dart, &dart.targetScore, &dart.targetRing,
                                     &dart.score, &dart.ring})
        texts += field->text.size();
    return 2 * texts + 15 * 26 + 16;
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
    const qsizetype before = out.size();
    out.resize(before + mostBytes(dart));
    RowWriter row(out.data() + before);
    row.text(dart.player);
    row.put(dart.practice ? QByteArrayView(",practice,") : QByteArrayView(",game,"));
    row.date(dart.date);
    row.put(',');
    row.field(dart.game);
    row.put(',');
    row.field(dart.set);
    row.put(',');
    row.place(dart);
    row.put(',');
    row.field(dart.targetScore);
    row.put(',');
    row.field(dart.targetRing);
    row.put(',');

    const std::optional<int> value = smallWhole(dart.targetScore);
    const std::optional<int> ring = smallWhole(dart.targetRing);
    const Aim aim = value && ring ? aimFor(*value, *ring) : std::nullopt;
    if (aim) {
        row.millimetres(aim->first.x * mmPerUnit);
        row.put(',');
        row.millimetres(aim->first.y * mmPerUnit);
    } else {
        row.put(',');
    }
    row.put(',');
    if (dart.x)
        row.millimetres(*dart.x * mmPerUnit);
    row.put(',');
    if (dart.y)
        row.millimetres(*dart.y * mmPerUnit);
    row.put(',');
    if (aim && dart.x && dart.y)
        row.millimetres(std::hypot(*dart.x - aim->first.x, *dart.y - aim->first.y) * mmPerUnit);
    row.put(',');
    row.field(dart.score);
    row.put(',');
    row.field(dart.ring);
    row.put("\r\n");
    out.truncate(row.end() - out.constData());
}

} // namespace tavrix
