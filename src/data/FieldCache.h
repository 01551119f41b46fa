#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wordbm {

// The pieces of one line of the control file, split at the separator. Pieces are found only up
// to the one asked for, so a hostile line of millions of separators costs no more than is read;
// consecutive reads on one line still scan it only once.
class FieldCache {
public:
    // Starts over with `line`, split at `separator`.
    void assign(std::string line, std::string_view separator);

    // Piece `index` of the line (0-based), nullopt past the last one.
    std::optional<std::string_view> piece(std::size_t index);

private:
    struct Span {
        std::size_t begin;
        std::size_t length;
    };

    void findNextPiece();

    std::string separator_;
    std::string line_;
    std::vector<Span> pieces_; // offsets relative to the line
    std::size_t scanFrom_ = 0;
    bool complete_ = true; // a new cache holds no pieces at all
};

} // namespace wordbm
