#pragma once

#include <csignal>

namespace wordbm {

class TerminalUserInterface;

// While it lives, Ctrl-C asks the running command to stop at its next item instead of ending the
// program in the middle of an invoice; a second Ctrl-C ends it at once.
class InterruptStop {
public:
    explicit InterruptStop(TerminalUserInterface& ui);
    ~InterruptStop();
    InterruptStop(const InterruptStop&) = delete;
    InterruptStop& operator=(const InterruptStop&) = delete;

private:
    static void onInterrupt(int signal);

    struct sigaction previous_ {};
};

} // namespace wordbm
