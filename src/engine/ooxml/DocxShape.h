#pragma once

#include "engine/ooxml/ShapeXml.h"
#include "engine/word/Shapes.h"

#include <memory>

namespace wordbm::ooxml {

class DocxDocument;
class Story;

// A shape in a part story (top level or inside a canvas). Its XML element is checked on every
// call: once the shape is deleted, calls throw.
class DocxShape final : public word::Shape, public std::enable_shared_from_this<DocxShape> {
public:
    DocxShape(std::shared_ptr<DocxDocument> document, Story* holder, ShapeXml shape);

    std::string Name() const override;
    void Name(const std::string& name) override;
    int Type() const override;
    float Left() const override;
    float Top() const override;
    float Width() const override;
    float Height() const override;
    void Delete() override;
    word::TextFramePtr TextFrame() override;
    word::CanvasShapesPtr CanvasItems() override;
    word::LineFormatPtr Line() override;

    // Throws AutomationError when the shape is gone.
    const ShapeXml& checked() const;
    Story& holder() const { return *holder_; }
    DocxDocument& document() const { return *document_; }

private:
    std::shared_ptr<DocxDocument> document_;
    Story* holder_;
    ShapeXml shape_;
};

} // namespace wordbm::ooxml
