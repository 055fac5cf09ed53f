#pragma once

// The recorded darts as they are stored, one row at a time, for writing them
// out of the program (core/export). Nothing is collected: each row is handed
// over while the file is read, so a million darts take no more memory than
// one.

#include "core/stats/stats_access.h"

#include <QByteArrayView>
#include <QtGlobal>

#include <functional>
#include <optional>

namespace tavrix {

// A value as the file holds it: an integer as its number alone; anything
// else as SQLite's text of it ("" for an empty field) and, for a real that
// is a whole number, that number too.
struct StoredField {
    QByteArrayView text;
    std::optional<qint64> whole;
    bool isInteger() const { return text.isNull() && whole.has_value(); }
};

// One recorded dart. The views are valid only while the row is handed over.
struct ExportDart {
    bool practice = false;
    QByteArrayView player;   // the thrower's name, UTF-8; "" when no player row has the id
    QByteArrayView date;     // as stored ("2026-11-22 21:05:09")
    StoredField game;        // the game's id; empty for practice
    StoredField set;         // the set's number in its game, or the practice target's id
    StoredField dart;        // the place in the set as stored (see DartExport)
    StoredField targetScore; // the game dart's target, or the practice target's value
    StoredField targetRing;
    std::optional<double> x; // board units; empty fields stay empty
    std::optional<double> y;
    StoredField score;
    StoredField ring;
};

class DartExport : public virtual StatsAccess {
public:
    // How many darts readExportDarts hands over: the player's, or everybody's
    // when no player is given. Nothing when the file cannot be read.
    virtual std::optional<qint64> exportDartCount(std::optional<qint64> playerId) = 0;
    // Hands over the darts, practice darts first and then game darts, each in
    // the order they were recorded. Game darts keep dartseq as stored (0 to 2
    // in a set, 1 for the cork dart of set 0), practice darts their seq (0 to
    // 2). The taker returns false to stop; a stop is no failure. False (with
    // lastError()) when the file cannot be read.
    using ExportDartTaker = std::function<bool(const ExportDart &dart)>;
    virtual bool readExportDarts(std::optional<qint64> playerId, const ExportDartTaker &take) = 0;

protected:
    ~DartExport() = default;
};

} // namespace tavrix
