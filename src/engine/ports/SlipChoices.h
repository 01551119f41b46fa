#pragma once

#include <string>

namespace wordbm {

// The pieces of the QR payment slip the user wants laid into the form; the defaults are the
// dialog's state on opening.
struct SlipChoices {
    bool deleteExisting = true;
    bool ST = true; // separation text
    bool STborder = false;
    bool ET = true; // receipt
    bool ETborder = true;
    bool ZT = true; // payment part
    bool ZTborder = true;
    bool fieldBorders = false;
    std::string language = "Deutsch";
};

} // namespace wordbm
