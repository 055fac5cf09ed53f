#pragma once

// What every interface of the statistics store shares: the text of the last
// failure, which callers show, and writes grouped in one transaction.

#include <QString>

namespace tavrix {

class StatsAccess {
public:
    // Why the last read or write failed, in words for the user.
    virtual QString lastError() const = 0;
    // When what could not be written will be: "the statistics file can be
    // written again", or for a server "the club database can be reached
    // again".
    virtual QString whenWritableAgain() const { return QStringLiteral("the statistics file can be written again"); }

    // A transaction: false (with lastError()) when it cannot be started or
    // saved. Prefer Batch, which cannot leave one open.
    virtual bool beginTransaction() = 0;
    virtual bool commitTransaction() = 0;
    virtual void rollbackTransaction() = 0;

    // Writes grouped in one transaction: begin, write, commit. A batch that is
    // not committed is rolled back when it goes out of scope.
    class Batch {
    public:
        explicit Batch(StatsAccess &store)
            : store_(store)
            , active_(store.beginTransaction())
        {
        }
        ~Batch()
        {
            if (active_)
                store_.rollbackTransaction();
        }
        Batch(const Batch &) = delete;
        Batch &operator=(const Batch &) = delete;
        bool isActive() const { return active_; }
        bool commit()
        {
            if (!active_)
                return false;
            active_ = false;
            return store_.commitTransaction();
        }

    private:
        StatsAccess &store_;
        bool active_ = false;
    };

protected:
    ~StatsAccess() = default;
};

} // namespace tavrix
