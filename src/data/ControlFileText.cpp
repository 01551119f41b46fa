#include "data/ControlFileText.h"

#include "support/ReadFile.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <zlib.h>

namespace wordbm {

namespace {

// Large enough to compress well, small enough that a reader's window costs little.
constexpr std::size_t BlockBytes = std::size_t{1} << 16;

// Counted first: growing the table of line starts by doubling would cost a hostile file of bare
// line ends several times its own size.
std::optional<std::size_t> countLineEnds(const std::string& path, std::size_t maxBytes) {
    ReadFile in(path);
    std::size_t ends = 0;
    bool afterCr = false;
    const bool read = in.readChunks(maxBytes, [&](std::string_view bytes) {
        ends += afterCr && bytes.front() == '\n' ? 1 : 0;
        for (std::size_t at = bytes.find("\r\n"); at != std::string_view::npos;
             at = bytes.find("\r\n", at + 2)) {
            ++ends;
        }
        afterCr = bytes.back() == '\r';
    });
    return read ? std::optional(ends) : std::nullopt;
}

} // namespace

std::shared_ptr<const ControlFileText> ControlFileText::empty() {
    static const auto none = std::make_shared<const ControlFileText>();
    return none;
}

std::shared_ptr<const ControlFileText> ControlFileText::read(const std::string& path, std::size_t maxBytes) {
    maxBytes = std::min<std::size_t>(maxBytes, std::numeric_limits<std::uint32_t>::max());
    const auto ends = countLineEnds(path, maxBytes);
    if (!ends) {
        return empty();
    }
    auto text = std::make_shared<ControlFileText>();
    text->lineStarts_.reserve(*ends + 1);
    ReadFile in(path);
    std::string pending; // the bytes not yet in a block, from offset `base` of the text
    std::uint64_t base = 0;
    std::size_t scanFrom = 0;
    const bool read = in.readChunks(maxBytes, [&](std::string_view bytes) {
        if (base + pending.size() == 0) {
            text->lineStarts_.push_back(0);
        }
        pending.append(bytes);
        std::size_t cut = 0;
        for (std::size_t at = pending.find("\r\n", scanFrom); at != std::string::npos;
             at = pending.find("\r\n", at + 2)) {
            text->lineStarts_.push_back(static_cast<std::uint32_t>(base + at + 2));
            cut = at + 2;
        }
        // A CR at the end may be the first half of a line end that the next chunk completes.
        scanFrom = std::max(cut, pending.size() - 1);
        if (cut >= BlockBytes) {
            text->addBlock(std::string_view(pending).substr(0, cut));
            pending.erase(0, cut);
            base += cut;
            scanFrom -= cut;
        }
    });
    // The file may also have grown past the limit since it was counted.
    if (!read) {
        return empty();
    }
    if (!pending.empty()) {
        text->addBlock(pending);
    }
    text->size_ = base + pending.size();
    return text;
}

void ControlFileText::addBlock(std::string_view raw) {
    Block block;
    block.start = blocks_.empty() ? 0 : blocks_.back().start + blocks_.back().size;
    block.size = raw.size();
    uLongf length = compressBound(static_cast<uLong>(raw.size()));
    block.compressed.resize(length);
    // The fastest level: a control file is mostly digits and repeated names, which even it shrinks
    // to about a fifth.
    compress2(reinterpret_cast<Bytef*>(block.compressed.data()), &length,
              reinterpret_cast<const Bytef*>(raw.data()), static_cast<uLong>(raw.size()), Z_BEST_SPEED);
    block.compressed.resize(length);
    block.compressed.shrink_to_fit();
    blocks_.push_back(std::move(block));
}

std::size_t ControlFileText::blockOf(std::uint64_t offset) const {
    const auto after =
        std::upper_bound(blocks_.begin(), blocks_.end(), offset,
                         [](std::uint64_t at, const Block& block) { return at < block.start; });
    return static_cast<std::size_t>(after - blocks_.begin()) - 1;
}

bool ControlFileText::load(std::size_t block, Window& window) const {
    if (window.block_ == block) {
        return true;
    }
    const Block& source = blocks_[block];
    window.raw_.resize(source.size);
    uLongf length = static_cast<uLongf>(source.size);
    const int result = uncompress(reinterpret_cast<Bytef*>(window.raw_.data()), &length,
                                  reinterpret_cast<const Bytef*>(source.compressed.data()),
                                  static_cast<uLong>(source.compressed.size()));
    window.block_ = result == Z_OK && length == source.size ? block : static_cast<std::size_t>(-1);
    return window.block_ == block;
}

std::string_view ControlFileText::line(std::size_t index, Window& window) const {
    if (index >= lineStarts_.size() || blocks_.empty()) {
        return {};
    }
    const std::uint64_t begin = lineStarts_[index];
    const std::uint64_t end = index + 1 < lineStarts_.size() ? lineStarts_[index + 1] - 2 : size_;
    const std::size_t block = blockOf(begin);
    if (!load(block, window)) {
        return {};
    }
    // Blocks end after a line end, so a line never spans two.
    return std::string_view(window.raw_).substr(begin - blocks_[block].start, end - begin);
}

} // namespace wordbm
