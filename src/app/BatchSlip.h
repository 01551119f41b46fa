#pragma once

#include "engine/ports/SlipChoices.h"

#include <iosfwd>
#include <string>

namespace wordbm {

// `wordbm insert-slip`: lays the QR payment slip into a form and saves the result under a new name;
// the form itself stays as it is.
class BatchSlip {
public:
    BatchSlip(std::ostream& out, std::ostream& err) : out_(out), err_(err) {}

    // Returns the exit code: 0, or 2 when the form cannot be opened, built into or saved.
    int insert(const std::string& formPath, const std::string& outPath, const SlipChoices& choices);

private:
    std::ostream& out_;
    std::ostream& err_;
};

} // namespace wordbm
