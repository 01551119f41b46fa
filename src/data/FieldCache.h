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
    // Starts over with the line at [begin, begin + length) of the file's text, split at `separator`.
    void assign(std::size_t begin, std::size_t length, std::string_view separator);

    // Piece `index` of the line (0-based), nullopt past the last one. `text` is the file's text
    // the line was assigned from; once detached, the cache's own copy is used instead.
    std::optional<std::string_view> piece(std::string_view text, std::size_t index);

    // Copies the line out of `text`, which is about to be replaced, so the cache keeps answering
    // with the old line's pieces.
    void detach(std::string_view text);

private:
    struct Span {
        std::size_t begin;
        std::size_t length;
    };

    std::string_view line(std::string_view text) const;
    void findNextPiece(std::string_view line);

    std::string separator_;
    std::string ownLine_;
    bool detached_ = false;
    std::size_t begin_ = 0;
    std::size_t length_ = 0;
    std::vector<Span> pieces_; // offsets relative to the line
    std::size_t scanFrom_ = 0;
    bool complete_ = true; // a new cache holds no pieces at all
};

} // namespace wordbm
