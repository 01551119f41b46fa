#include "engine/ooxml/DocxFields.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxField.h"
#include "engine/ooxml/Story.h"
#include "engine/word/AutomationError.h"

namespace wordbm::ooxml {

DocxFields::DocxFields(std::shared_ptr<DocxDocument> document, Story* story, long start, long end,
                       bool wholeStory)
    : document_(std::move(document)), story_(story), start_(start), end_(end), wholeStory_(wholeStory) {}

std::vector<pugi::xml_node> DocxFields::begins() const {
    document_->check();
    std::vector<pugi::xml_node> found;
    if (!story_ || !story_->alive()) {
        return found;
    }
    const auto& map = story_->map();
    const auto fields = wholeStory_ ? map.fieldsWithin(0, map.length()) : map.fieldsWithin(start_, end_);
    for (const int field : fields) {
        found.push_back(map.items[map.fields[field].begin].node);
    }
    return found;
}

int DocxFields::Count() const {
    return static_cast<int>(begins().size());
}

word::FieldPtr DocxFields::Item(int index) {
    const auto found = begins();
    if (index < 1 || index > static_cast<int>(found.size())) {
        throw AutomationError("Das angeforderte Element der Feld-Auflistung ist nicht vorhanden.");
    }
    return std::make_shared<DocxField>(document_, story_, found[index - 1]);
}

} // namespace wordbm::ooxml
