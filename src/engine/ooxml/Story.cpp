#include "engine/ooxml/Story.h"

#include "engine/ooxml/TextMapBuilder.h"

namespace wordbm::ooxml {

namespace {

int defaultWordType(StoryKind kind) {
    switch (kind) {
    case StoryKind::Main:
        return 1;
    case StoryKind::Footnotes:
        return 2;
    case StoryKind::Endnotes:
        return 3;
    case StoryKind::Comments:
        return 4;
    case StoryKind::TextBox:
        return 5;
    case StoryKind::Header:
        return 7;
    case StoryKind::Footer:
        return 9;
    }
    return 1;
}

} // namespace

Story::Story(StoryKind kind, std::string name, std::string partName, pugi::xml_node root)
    : kind_(kind), name_(std::move(name)), partName_(std::move(partName)), root_(root),
      wordType_(defaultWordType(kind)) {}

const TextMap& Story::map() {
    if (!map_ || mapGeneration_ != generation_) {
        map_ = std::make_unique<TextMap>(TextMapBuilder::build(root_));
        mapGeneration_ = generation_;
    }
    return *map_;
}

void Story::changed() {
    ++generation_;
    edited_ = true;
}

} // namespace wordbm::ooxml
