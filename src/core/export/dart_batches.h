#pragma once

// Darts handed from the thread that reads them to the thread that writes
// them, a few thousand at a time, so that reading the file and writing the
// CSV run side by side. Each batch keeps its own copy of the texts the darts
// point at; at most a few batches are under way, so memory stays flat
// however many darts there are.

#include "core/stats/dart_export.h"

#include <QByteArray>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <vector>

namespace tavrix {

class DartBatch {
public:
    DartBatch();
    // False when the batch has no room for the dart; it is then left out.
    bool add(const ExportDart &dart);
    bool isEmpty() const { return darts_.empty(); }
    const std::vector<ExportDart> &darts() const { return darts_; }
    void clear();

private:
    QByteArrayView keep(QByteArrayView text);
    StoredField keep(const StoredField &field) { return {keep(field.text), field.whole}; }

    std::vector<ExportDart> darts_;
    // The darts' texts, sized once: the views in darts_ point into it.
    QByteArray texts_;
    qsizetype used_ = 0;
};

class DartBatches {
public:
    // Waits while the writer is behind; false when it has stopped.
    bool send(DartBatch &&batch);
    // The next batch, waiting for it; nothing once everything sent has been
    // taken and the reader has finished, or when the writer was stopped.
    std::optional<DartBatch> take();
    // A batch to fill, reusing one the writer is done with where it can.
    DartBatch fresh();
    void giveBack(DartBatch &&batch);
    // No more batches will come.
    void finish();
    // Either side gives up: the other side stops at its next step.
    void stop();

private:
    static constexpr size_t mostUnderWay = 3;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<DartBatch> sent_;
    std::vector<DartBatch> spare_;
    bool finished_ = false;
    bool stopped_ = false;
};

} // namespace tavrix
