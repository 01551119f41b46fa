#pragma once

#include "engine/ooxml/Span.h"
#include "engine/word/Fields.h"

#include <memory>
#include <pugixml.hpp>

namespace wordbm::ooxml {

class DocxDocument;
class Story;

// A field by its begin node (the w:fldChar "begin" or the w:fldSimple), which no edit elsewhere
// moves or frees; once the field itself is deleted every call throws.
class DocxField final : public word::Field {
public:
    DocxField(std::shared_ptr<DocxDocument> document, Story* story, pugi::xml_node begin);

    word::RangePtr Code() override;
    word::RangePtr Result() override;
    void Select() override;
    void Delete() override;

private:
    word::RangePtr part(FieldPart which);

    std::shared_ptr<DocxDocument> document_;
    Story* story_;
    pugi::xml_node begin_;
};

} // namespace wordbm::ooxml
