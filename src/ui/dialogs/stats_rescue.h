#pragma once

// What the window does when the statistics file cannot be written: a file
// that was deleted, replaced or written over is said once, with the offer to
// save the statistics and the darts not yet saved into another file, and
// the program then goes on with that file. Other failures are said in the
// store's words.

#include <QString>

#include <functional>

class QWidget;

namespace tavrix {

class GameJournal;
class Messages;
class StatsStore;
struct Session;

class StatsRescue {
public:
    StatsRescue(StatsStore &store, Messages &messages, Session &session);

    // The darts of games not saved yet; they go into another file with the
    // statistics.
    void setJournal(GameJournal *journal) { journal_ = journal; }
    // Writes the row of the practice set open, where the new file lacks it;
    // false (with the store's lastError()) when it cannot.
    void setPracticeRestore(std::function<bool()> restore) { restorePractice_ = std::move(restore); }

    // The file opened was deleted, replaced or written over since.
    bool fileLost() const;
    // Says that the file was lost and why a write failed, offering to save
    // into another file now; only the first time after the file was lost.
    void tellFileLost(QWidget *parent, const QString &error);
    // A write failed: said as above when the file was lost and that was not
    // said yet, else in the store's own words.
    void reportFailure(QWidget *parent, const QString &error);
    // Asks for a file, saves the statistics there, goes on with it and
    // writes the darts not saved yet. False when the user cancelled or it
    // failed (and was said).
    bool saveIntoAnotherFile(QWidget *parent);

private:
    StatsStore &store_;
    // The last failure of a club database told, told only once.
    QString lastServerError_;
    Messages &messages_;
    Session &session_;
    GameJournal *journal_ = nullptr;
    std::function<bool()> restorePractice_;
    bool told_ = false;
};

} // namespace tavrix
