#pragma once

#include "engine/word/Selection.h"

#include <memory>

namespace wordbm::ooxml {

class DocxDocument;
class Story;
struct SelectionState;

// The cursor of one document. Moves count UTF-16 units but never stop inside a character that takes
// two; a selection made by Field.Select stands for the whole field until it moves.
class DocxSelection final : public word::Selection {
public:
    explicit DocxSelection(std::shared_ptr<DocxDocument> document) : document_(std::move(document)) {}

    long Start() const override;
    long End() const override;
    std::string Text() const override;
    word::RangePtr Range() override;
    word::FontPtr Font() override;
    int HomeKey(int unit = word::wd::wdStory, int extend = word::wd::wdMove) override;
    void TypeText(const std::string& text) override;
    int MoveLeft(int unit = word::wd::wdCharacter, int count = 1, int extend = word::wd::wdMove) override;
    int MoveRight(int unit = word::wd::wdCharacter, int count = 1, int extend = word::wd::wdMove) override;
    void TypeBackspace() override;
    void Paste() override;
    void SetRange(long start, long end) override;

private:
    SelectionState& state() const;
    Story& story() const;
    int move(int unit, int count, int extend, int direction);
    // The width of the character before (direction -1) or after (+1) an offset: 2 for a surrogate pair.
    long step(long offset, int direction) const;

    std::shared_ptr<DocxDocument> document_;
};

} // namespace wordbm::ooxml
