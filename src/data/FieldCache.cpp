#include "data/FieldCache.h"

namespace wordbm {

void FieldCache::assign(std::size_t begin, std::size_t length, std::string_view separator) {
    separator_ = separator;
    ownLine_ = std::string(); // releases a detached copy, which may be large
    detached_ = false;
    begin_ = begin;
    length_ = length;
    pieces_.clear();
    scanFrom_ = 0;
    // An empty line splits into no pieces at all, not into one empty piece.
    complete_ = length == 0;
}

std::optional<std::string_view> FieldCache::piece(std::string_view text, std::size_t index) {
    const std::string_view whole = line(text);
    while (!complete_ && pieces_.size() <= index) {
        findNextPiece(whole);
    }
    if (index >= pieces_.size()) {
        return std::nullopt;
    }
    return whole.substr(pieces_[index].begin, pieces_[index].length);
}

void FieldCache::detach(std::string_view text) {
    if (detached_) {
        return;
    }
    ownLine_ = std::string(line(text));
    begin_ = 0;
    detached_ = true;
}

std::string_view FieldCache::line(std::string_view text) const {
    if (detached_) {
        return ownLine_;
    }
    // A cache that outlived its text without being detached must not read past the new one.
    if (begin_ > text.size() || length_ > text.size() - begin_) {
        return {};
    }
    return text.substr(begin_, length_);
}

void FieldCache::findNextPiece(std::string_view whole) {
    if (scanFrom_ > whole.size()) {
        complete_ = true; // only a line lost to a replaced text gets here
        return;
    }
    const std::size_t next = separator_.empty() ? std::string_view::npos : whole.find(separator_, scanFrom_);
    if (next == std::string_view::npos) {
        pieces_.push_back({scanFrom_, whole.size() - scanFrom_});
        complete_ = true;
        return;
    }
    pieces_.push_back({scanFrom_, next - scanFrom_});
    scanFrom_ = next + separator_.size();
}

} // namespace wordbm
