#pragma once

#include <cstdint>
#include <vector>

namespace wordbm {

// The penalty the QR code standard (ISO/IEC 18004:2015, 7.8.3) gives a masked symbol; the encoder
// keeps the mask with the lowest. Modules are row-major, 1 for dark, `size` a side.
class MaskPenalty {
public:
    static long score(const std::vector<std::uint8_t>& modules, int size);

private:
    // Runs of one colour and finder-like patterns along one row or column; `step` walks it.
    static long lineScore(const std::uint8_t* first, int step, int size);
    static long blockScore(const std::vector<std::uint8_t>& modules, int size);
    static long balanceScore(const std::vector<std::uint8_t>& modules, int size);
};

} // namespace wordbm
