#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace wordbm {

// The raw (cp1252) text of a control file, split into physical lines at CR LF and held compressed
// in blocks of whole lines, so that a run of ten thousand invoices costs a fifth of the file's size
// in memory instead of all of it. Immutable once read: the threads of a merge share one.
class ControlFileText {
public:
    // The decompressed block a reader is on; each reader (thread) keeps its own.
    class Window {
    public:
        Window() = default;

    private:
        friend class ControlFileText;
        std::string raw_;
        std::size_t block_ = static_cast<std::size_t>(-1);
    };

    // An unreadable file, or one past `maxBytes` (below 4 GiB), reads as an empty text without lines.
    static std::shared_ptr<const ControlFileText> read(const std::string& path, std::size_t maxBytes);
    static std::shared_ptr<const ControlFileText> empty();

    // Physical lines: none for an empty text, else one more than there are CR LF.
    std::size_t lineCount() const { return lineStarts_.size(); }
    // Line `index` without its CR LF, as raw bytes in `window`; valid until the window moves on.
    std::string_view line(std::size_t index, Window& window) const;

private:
    struct Block {
        std::string compressed;
        std::uint64_t start = 0; // offset of its first byte in the whole text
        std::size_t size = 0;
    };

    void addBlock(std::string_view raw);
    std::size_t blockOf(std::uint64_t offset) const;
    bool load(std::size_t block, Window& window) const;

    std::vector<Block> blocks_;
    // Where each line starts; 32 bits, as `read` refuses files of 4 GiB and more.
    std::vector<std::uint32_t> lineStarts_;
    std::uint64_t size_ = 0;
};

} // namespace wordbm
