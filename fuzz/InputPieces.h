#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// An input that must carry several texts (a mask and a control file, the words of a command line)
// holds them separated by NUL bytes, which none of these texts can contain on its way in.
inline std::vector<std::string> inputPieces(const std::uint8_t* data, std::size_t size) {
    std::vector<std::string> pieces(1);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0) {
            pieces.emplace_back();
        } else {
            pieces.back() += static_cast<char>(data[i]);
        }
    }
    return pieces;
}
