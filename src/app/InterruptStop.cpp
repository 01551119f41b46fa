#include "app/InterruptStop.h"

#include "app/TerminalUserInterface.h"

#include <atomic>

namespace wordbm {

namespace {

std::atomic<TerminalUserInterface*> target{nullptr};

} // namespace

InterruptStop::InterruptStop(TerminalUserInterface& ui) {
    target = &ui;
    struct sigaction action {};
    action.sa_handler = &InterruptStop::onInterrupt;
    sigemptyset(&action.sa_mask);
    // The first one is ours; the default comes back for the second.
    action.sa_flags = SA_RESETHAND;
    sigaction(SIGINT, &action, &previous_);
}

InterruptStop::~InterruptStop() {
    sigaction(SIGINT, &previous_, nullptr);
    target = nullptr;
}

void InterruptStop::onInterrupt(int /*signal*/) {
    if (TerminalUserInterface* ui = target.load()) {
        ui->requestStop();
    }
}

} // namespace wordbm
