#pragma once

#include "app/TerminalUserInterface.h"
#include "engine/WordBM.h"
#include "settings/Opt.h"
#include "settings/OptOptions.h"

#include <iosfwd>

namespace wordbm {

// An engine for one batch verb: the user's settings read but never changed, a terminal user
// interface that answers Yes, and the embedded word processor. Ends the word processor, without
// saving, when it goes.
class VerbSession {
public:
    VerbSession(std::ostream& out, std::ostream& err, TerminalUserInterface::Policy policy);
    ~VerbSession();
    VerbSession(const VerbSession&) = delete;
    VerbSession& operator=(const VerbSession&) = delete;

    // Opens a working copy of the form; false (the reason printed) when it cannot be used.
    bool openForm(const std::string& form);
    // Reads a working copy of the control file; false when it cannot be used or holds no invoices.
    bool openControlFile(const std::string& csv);

    WordBM& engine() { return engine_; }
    TerminalUserInterface& ui() { return ui_; }

private:
    std::ostream& err_;
    Opt store_;
    OptOptions options_;
    TerminalUserInterface ui_;
    WordBM engine_;
};

} // namespace wordbm
