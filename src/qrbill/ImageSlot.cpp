#include "qrbill/ImageSlot.h"

#include <utility>

namespace wordbm {

ImageSlot& ImageSlot::instance() {
    static ImageSlot slot;
    return slot;
}

void ImageSlot::put(SlotImage image) {
    const std::lock_guard lock(mutex_);
    image_ = std::move(image);
}

std::optional<SlotImage> ImageSlot::read() const {
    const std::lock_guard lock(mutex_);
    return image_;
}

void ImageSlot::clear() {
    const std::lock_guard lock(mutex_);
    image_.reset();
}

bool ImageSlot::empty() const {
    const std::lock_guard lock(mutex_);
    return !image_.has_value();
}

} // namespace wordbm
