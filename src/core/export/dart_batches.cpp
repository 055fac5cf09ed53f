#include "core/export/dart_batches.h"

#include <cstring>

namespace tavrix {

namespace {

constexpr size_t dartsPerBatch = 512;
// Room for a name and a date on each dart; a batch whose texts run out of
// room is sent early.
constexpr qsizetype textBytesPerBatch = dartsPerBatch * 64;

qsizetype textBytes(const ExportDart &dart)
{
    qsizetype bytes = dart.player.size() + dart.date.size();
    for (const StoredField *field : {&dart.game, &dart.set, &dart.dart, &dart.targetScore, &dart.targetRing,
                                     &dart.score, &dart.ring})
        bytes += field->text.size();
    return bytes;
}

} // namespace

DartBatch::DartBatch()
{
    darts_.reserve(dartsPerBatch);
    texts_.resize(textBytesPerBatch);
}

bool DartBatch::add(const ExportDart &dart)
{
    const qsizetype bytes = textBytes(dart);
    if (darts_.size() >= dartsPerBatch || used_ + bytes > texts_.size()) {
        // A dart whose texts alone fill a batch gets a batch of its own.
        if (!darts_.empty())
            return false;
        texts_.resize(std::max(texts_.size(), bytes));
    }
    ExportDart &copy = darts_.emplace_back(dart);
    copy.player = keep(dart.player);
    copy.date = keep(dart.date);
    copy.game = keep(dart.game);
    copy.set = keep(dart.set);
    copy.dart = keep(dart.dart);
    copy.targetScore = keep(dart.targetScore);
    copy.targetRing = keep(dart.targetRing);
    copy.score = keep(dart.score);
    copy.ring = keep(dart.ring);
    return true;
}

void DartBatch::clear()
{
    darts_.clear();
    used_ = 0;
}

// A null view stays null (a field without text is a number); an empty one
// stays empty but not null.
QByteArrayView DartBatch::keep(QByteArrayView text)
{
    if (text.isNull())
        return text;
    char *const at = texts_.data() + used_;
    if (!text.isEmpty())
        std::memcpy(at, text.data(), size_t(text.size()));
    used_ += text.size();
    return QByteArrayView(at, text.size());
}

bool DartBatches::send(DartBatch &&batch)
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return stopped_ || sent_.size() < mostUnderWay; });
    if (stopped_)
        return false;
    sent_.push_back(std::move(batch));
    changed_.notify_all();
    return true;
}

std::optional<DartBatch> DartBatches::take()
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return stopped_ || finished_ || !sent_.empty(); });
    if (stopped_ || sent_.empty())
        return std::nullopt;
    DartBatch batch = std::move(sent_.front());
    sent_.pop_front();
    changed_.notify_all();
    return batch;
}

DartBatch DartBatches::fresh()
{
    {
        const std::lock_guard lock(mutex_);
        if (!spare_.empty()) {
            DartBatch batch = std::move(spare_.back());
            spare_.pop_back();
            return batch;
        }
    }
    return DartBatch();
}

void DartBatches::giveBack(DartBatch &&batch)
{
    batch.clear();
    const std::lock_guard lock(mutex_);
    spare_.push_back(std::move(batch));
}

void DartBatches::finish()
{
    const std::lock_guard lock(mutex_);
    finished_ = true;
    changed_.notify_all();
}

void DartBatches::stop()
{
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    changed_.notify_all();
}

} // namespace tavrix
