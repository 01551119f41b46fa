#pragma once

#include "engine/word/Shapes.h"

#include <memory>

namespace wordbm::ooxml {

class DocxShape;

// How the body text flows around a floating drawing.
class DocxWrapFormat final : public word::WrapFormat {
public:
    explicit DocxWrapFormat(std::shared_ptr<DocxShape> shape) : shape_(std::move(shape)) {}
    int Type() const override;
    void Type(int type) override;
    float DistanceTop() const override;
    void DistanceTop(float points) override;

private:
    std::shared_ptr<DocxShape> shape_;
};

} // namespace wordbm::ooxml
