#pragma once

#include "engine/ooxml/Span.h"
#include "engine/word/Font.h"

#include <memory>

namespace wordbm::ooxml {

class DocxDocument;
class Story;

// The character formatting of a span: reading gives the first character's (for an empty span, the
// formatting typing would take there), writing sets it on every run of the span.
class DocxFont final : public word::Font {
public:
    DocxFont(std::shared_ptr<DocxDocument> document, Story* story, Span span);

    std::string Name() const override;
    void Name(const std::string& name) override;
    float Size() const override;
    void Size(float points) override;
    bool Bold() const override;
    void Bold(bool bold) override;

private:
    struct Source {
        pugi::xml_node runProperties;
        pugi::xml_node paragraph;
    };
    Source source() const;

    std::shared_ptr<DocxDocument> document_;
    Story* story_;
    Span span_;
};

} // namespace wordbm::ooxml
