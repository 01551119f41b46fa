#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

namespace wordbm {

// A picture waiting to be pasted: PNG bytes and the size at which it goes into the document.
struct SlotImage {
    std::vector<std::uint8_t> png;
    double widthMm = 0.0;
    double heightMm = 0.0;
};

// The application's in-process "clipboard" for pictures. The QR image's ClipboardCopy puts its
// picture here and the document backend's Selection.Paste reads it. The system clipboard is left
// alone on purpose: a merge run must not depend on (or overwrite) what the user copied meanwhile.
class ImageSlot {
public:
    // The one slot of the process.
    static ImageSlot& instance();

    // Replaces whatever the slot held.
    void put(SlotImage image);

    // A copy of the held picture, which stays in the slot (pasting twice pastes twice);
    // nullopt when the slot is empty.
    std::optional<SlotImage> read() const;

    void clear();
    bool empty() const;

private:
    ImageSlot() = default;

    mutable std::mutex mutex_;
    std::optional<SlotImage> image_;
};

} // namespace wordbm
