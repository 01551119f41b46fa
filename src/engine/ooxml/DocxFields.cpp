#include "engine/ooxml/DocxFields.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxField.h"
#include "engine/ooxml/Story.h"
#include "engine/word/AutomationError.h"

namespace wordbm::ooxml {

DocxFields::DocxFields(std::shared_ptr<DocxDocument> document, Story* story, long start, long end,
                       bool wholeStory)
    : document_(std::move(document)), story_(story), start_(start), end_(end), wholeStory_(wholeStory) {}

DocxFields::DocxFields(std::shared_ptr<DocxDocument> document, Story* story, pugi::xml_node holder,
                       FieldPart part)
    : document_(std::move(document)), story_(story), start_(0), end_(0), wholeStory_(false), holder_(holder),
      part_(part) {}

std::vector<int> DocxFields::nestedInHolder() const {
    const auto& map = story_->map();
    const int holder = map.fieldOf(holder_);
    std::vector<int> found;
    if (holder < 0) {
        return found;
    }
    const int separate = map.fields[holder].separate;
    for (const int f : map.fieldsInside(holder)) {
        int outer = map.fields[f].parent;
        int child = f;
        while (outer >= 0 && outer != holder) {
            child = outer;
            outer = map.fields[outer].parent;
        }
        if (outer != holder) {
            continue;
        }
        // Whether the branch holding f begins before or after the holder's separator; what a
        // simple field holds is its result.
        const bool inCode =
            !map.fields[holder].simple && (separate < 0 || map.fields[child].begin < separate);
        if (inCode == (part_ == FieldPart::Code)) {
            found.push_back(f);
        }
    }
    return found;
}

const std::vector<pugi::xml_node>& DocxFields::begins() const {
    document_->check();
    if (!story_ || !story_->alive()) {
        found_.clear();
        foundGeneration_ = ~std::uint64_t{0};
    } else if (story_->generation() != foundGeneration_) {
        found_ = lookUp();
        foundGeneration_ = story_->generation();
    }
    return found_;
}

std::vector<pugi::xml_node> DocxFields::lookUp() const {
    std::vector<pugi::xml_node> found;
    const auto& map = story_->map();
    const auto fields = holder_       ? nestedInHolder()
                        : wholeStory_ ? map.fieldsWithin(0, map.length())
                                      : map.fieldsWithin(start_, end_);
    for (const int field : fields) {
        found.push_back(map.items[map.fields[field].begin].node);
    }
    return found;
}

int DocxFields::Count() const {
    return static_cast<int>(begins().size());
}

word::FieldPtr DocxFields::Item(int index) {
    const auto& found = begins();
    if (index < 1 || index > static_cast<int>(found.size())) {
        throw AutomationError("Das angeforderte Element der Feld-Auflistung ist nicht vorhanden.");
    }
    return std::make_shared<DocxField>(document_, story_, found[index - 1]);
}

} // namespace wordbm::ooxml
