#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace wordbm {

class QRCoder;

// What the slip's boxes look like in a form filled with stand-ins, kept to tell for a row whether
// fitting its texts into the boxes would change anything, without the word processor.
class SlipFitCheck {
public:
    virtual ~SlipFitCheck() = default;

    // `texts` holds what takes the place of each stand-in, by the stand-in's number; true when the
    // boxes filled with them need no shortening.
    virtual bool LeavesAlone(const std::vector<std::string>& texts, const QRCoder& coder,
                             std::int32_t row) const = 0;
};

} // namespace wordbm
