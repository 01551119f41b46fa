#include "data/FieldCache.h"

namespace wordbm {

void FieldCache::assign(std::string line, std::string_view separator) {
    separator_ = separator;
    line_ = std::move(line);
    pieces_.clear();
    scanFrom_ = 0;
    // An empty line splits into no pieces at all, not into one empty piece.
    complete_ = line_.empty();
}

std::optional<std::string_view> FieldCache::piece(std::size_t index) {
    while (!complete_ && pieces_.size() <= index) {
        findNextPiece();
    }
    if (index >= pieces_.size()) {
        return std::nullopt;
    }
    return std::string_view(line_).substr(pieces_[index].begin, pieces_[index].length);
}

void FieldCache::findNextPiece() {
    const std::size_t next = separator_.empty() ? std::string::npos : line_.find(separator_, scanFrom_);
    if (next == std::string::npos) {
        pieces_.push_back({scanFrom_, line_.size() - scanFrom_});
        complete_ = true;
        return;
    }
    pieces_.push_back({scanFrom_, next - scanFrom_});
    scanFrom_ = next + separator_.size();
}

} // namespace wordbm
