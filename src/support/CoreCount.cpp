#include "support/CoreCount.h"

#include <algorithm>
#include <sched.h>
#include <thread>

namespace wordbm {

int CoreCount() {
    // A container or `taskset` may grant fewer cores than the machine has.
    cpu_set_t allowed;
    if (sched_getaffinity(0, sizeof allowed, &allowed) == 0) {
        return std::max(CPU_COUNT(&allowed), 1);
    }
    return std::max(static_cast<int>(std::thread::hardware_concurrency()), 1);
}

} // namespace wordbm
