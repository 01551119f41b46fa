#include "engine/merge/PrintTurns.h"

namespace wordbm {

void PrintTurns::wait(std::size_t sequence) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return next_ >= sequence; });
}

void PrintTurns::done(std::size_t sequence) {
    {
        const std::lock_guard lock(mutex_);
        if (next_ != sequence) {
            return;
        }
        next_ = sequence + 1;
    }
    changed_.notify_all();
}

} // namespace wordbm
