#pragma once

namespace wordbm {

// What the merge run does with every invoice, as the merge dialog returns it. Delete is never
// stored between runs; choosing it forces Close.
struct MergeChoices {
    bool Print = false;
    bool PDF = false;
    bool PDFA = false;
    bool Close = false;
    bool WordClose = false;
    bool Delete = false;
};

} // namespace wordbm
