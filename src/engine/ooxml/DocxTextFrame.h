#pragma once

#include "engine/word/Shapes.h"

#include <memory>

namespace wordbm::ooxml {

class DocxShape;

// The text frame of a shape: its text box story. A shape without one has no text and no range.
class DocxTextFrame final : public word::TextFrame {
public:
    explicit DocxTextFrame(std::shared_ptr<DocxShape> shape) : shape_(std::move(shape)) {}
    bool HasText() const override;
    word::RangePtr TextRange() override;

private:
    std::shared_ptr<DocxShape> shape_;
};

} // namespace wordbm::ooxml
