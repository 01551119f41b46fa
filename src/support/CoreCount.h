#pragma once

namespace wordbm {

// The processor cores this process may run on (its CPU affinity, as `nproc` counts them); at least 1.
// The merge makes this many invoices side by side unless told otherwise.
int CoreCount();

} // namespace wordbm
