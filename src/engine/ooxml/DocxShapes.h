#pragma once

#include "engine/ooxml/ShapeXml.h"
#include "engine/word/Shapes.h"

#include <memory>
#include <utility>
#include <vector>

namespace wordbm::ooxml {

class DocxDocument;
class Story;

// Floating shapes, as Word's Shapes collection has them (inline pictures are Word's InlineShapes):
// those anchored in the main story, or, for a header or footer, those of all headers and footers.
class DocxShapes final : public word::Shapes {
public:
    enum class Scope { Main, HeadersFooters };

    DocxShapes(std::shared_ptr<DocxDocument> document, Scope scope);

    int Count() const override;
    word::ShapePtr Item(int index) override;
    word::ShapePtr Item(const std::string& name) override;
    word::ShapePtr AddCanvas(float left, float top, float width, float height,
                             const word::RangePtr& anchor = nullptr) override;

    // The floating shapes of the scope with the story each stands in.
    static std::vector<std::pair<Story*, ShapeXml>> list(DocxDocument& document, Scope scope);

private:
    std::shared_ptr<DocxDocument> document_;
    Scope scope_;
};

} // namespace wordbm::ooxml
