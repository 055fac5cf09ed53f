#pragma once

// The statistics written out of the program from the File menu: the darts
// as a CSV file, with a progress dialog that can cancel, and a copy of the
// whole statistics file as a backup.

class QWidget;

namespace tavrix {

class Messages;
class StatsStore;
struct Session;

class StatsFiles {
public:
    StatsFiles(StatsStore &store, Messages &messages, const Session &session);

    // Asks whose darts (the current player's or everybody's) and the file,
    // and writes them there; the outcome is said.
    void exportDarts(QWidget *parent);
    // Asks for a file and writes a copy of the statistics there.
    void backUp(QWidget *parent);

private:
    StatsStore &store_;
    Messages &messages_;
    const Session &session_;
};

} // namespace tavrix
