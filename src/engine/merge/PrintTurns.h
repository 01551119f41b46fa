#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace wordbm {

// Lets invoices made side by side reach the printer in row order: the invoice with sequence n
// prints only after every invoice before it has printed or given up its turn.
class PrintTurns {
public:
    // Blocks until it is the turn of `sequence`.
    void wait(std::size_t sequence);
    // Hands the turn on; only the invoice whose turn it is can end it.
    void done(std::size_t sequence);

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::size_t next_ = 0;
};

} // namespace wordbm
