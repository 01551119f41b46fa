#pragma once

#include "engine/word/Shapes.h"

#include <memory>

namespace wordbm::ooxml {

class DocxShape;

// The outline of a shape (of a canvas: its border).
class DocxLineFormat final : public word::LineFormat {
public:
    explicit DocxLineFormat(std::shared_ptr<DocxShape> shape) : shape_(std::move(shape)) {}
    bool Visible() const override;
    void Visible(bool visible) override;

private:
    std::shared_ptr<DocxShape> shape_;
};

} // namespace wordbm::ooxml
