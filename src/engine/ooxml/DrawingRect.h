#pragma once

namespace wordbm::ooxml {

// A shape's place and size in points, as the object model gives them.
struct DrawingRect {
    float left = 0.0F;
    float top = 0.0F;
    float width = 0.0F;
    float height = 0.0F;
};

} // namespace wordbm::ooxml
