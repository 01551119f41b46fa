#pragma once

#include "engine/word/Shapes.h"

#include <memory>

namespace wordbm::ooxml {

class DocxShape;

// The shapes inside a drawing canvas; positions in points relative to the canvas.
class DocxCanvasShapes final : public word::CanvasShapes {
public:
    explicit DocxCanvasShapes(std::shared_ptr<DocxShape> canvas) : canvas_(std::move(canvas)) {}
    int Count() const override;
    word::ShapePtr Item(int index) override;
    word::ShapePtr AddTextbox(int orientation, float left, float top, float width, float height) override;
    // The picture file is embedded (a link is not kept: the invoice must travel alone).
    word::ShapePtr AddPicture(const std::string& fileName, bool linkToFile, bool saveWithDocument, float left,
                              float top, float width, float height) override;

private:
    std::shared_ptr<DocxShape> canvas_;
};

} // namespace wordbm::ooxml
