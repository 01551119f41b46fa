#include "engine/layout/FormLayout.h"

#include "PrintedWords.h"
#include "data/KnownFields.h"
#include "engine/FormStories.h"
#include "engine/office/WorkerProgram.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Range.h"
#include "engine/word/Selection.h"
#include "kit/TempDir.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <gtest/gtest.h>

namespace wordbm {
namespace {

constexpr double Millimetre = 72.0 / 25.4;

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

// UTF-16 units of a UTF-8 text: one per character, two beyond U+FFFF.
long units(const std::string& utf8) {
    long count = 0;
    for (const unsigned char c : utf8) {
        count += (c & 0xC0) != 0x80 ? (c >= 0xF0 ? 2 : 1) : 0;
    }
    return count;
}

// A form opened as the engine opens its working copy, laid out through the office worker.
class FormLayoutTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (office::findWorkerProgram().empty()) {
            GTEST_SKIP() << "the LibreOffice worker is not built";
        }
        fields_.FieldsBESR();
    }

    void open(const std::string& form) {
        const std::string copy = dir_ / std::filesystem::path(form).filename().string();
        std::filesystem::copy_file(form, copy);
        app_ = ooxml::DocxApplication::create();
        doc_ = app_->Documents()->Open(copy);
        layout_ = FormLayout::make(*doc_, fields_, dir_ / "form.pdf");
        words_ = test::printedWords(dir_ / "form.pdf");
        stories_ = FormStories::list(*doc_);
    }

    // The text of a story from `offset` on, `length` units long, as the object model reads it.
    std::string storyText(const StoryPoint& point, long length) {
        const word::RangePtr range = stories_.at(static_cast<std::size_t>(point.story)).range;
        const long end = range->End();
        range->SetRange(point.offset, std::min(point.offset + length, end));
        std::string text = range->Text();
        range->SetRange(0, end);
        return text;
    }

    // Where a click on the left edge of a printed word puts the insertion point.
    std::optional<StoryPoint> clickOn(const test::PrintedWordBox& word) {
        return layout_->pointAt(word.page, word.left + 0.4, (word.top + word.bottom) / 2);
    }

    const test::PrintedWordBox* printed(const std::string& text) {
        const auto found = std::find_if(words_.begin(), words_.end(),
                                        [&](const test::PrintedWordBox& w) { return w.text == text; });
        return found == words_.end() ? nullptr : &*found;
    }

    // The word's story type where a click on it lands, checking that the word stands there.
    int clickedStoryType(const std::string& text) {
        const auto* word = printed(text);
        if (!word) {
            ADD_FAILURE() << text << " does not print";
            return 0;
        }
        const auto point = clickOn(*word);
        if (!point) {
            ADD_FAILURE() << text << " maps to no story";
            return 0;
        }
        EXPECT_EQ(storyText(*point, units(text)), text);
        return stories_.at(static_cast<std::size_t>(point->story)).range->StoryType();
    }

    // Share of the printed words that a click on their first letter finds in a story, there;
    // words that stand in no story's text (a field's code shown, a page number) do not count.
    double wordsFoundWhereTheyStand() {
        std::string all;
        for (const auto& story : stories_) {
            all += lower(story.range->Text());
        }
        int found = 0;
        int counted = 0;
        for (const auto& word : words_) {
            if (all.find(lower(word.text)) == std::string::npos) {
                continue;
            }
            ++counted;
            const auto point = clickOn(word);
            found += point && lower(storyText(*point, units(word.text))) == lower(word.text) ? 1 : 0;
        }
        return counted == 0 ? 0 : static_cast<double>(found) / counted;
    }

    TempDir dir_;
    KnownFields fields_;
    word::ApplicationPtr app_;
    word::DocumentPtr doc_;
    std::shared_ptr<FormLayout> layout_;
    std::vector<test::PrintedWordBox> words_;
    std::vector<FormStory> stories_;
};

TEST_F(FormLayoutTest, SampleFormFramesCoverTheirPrintedTextWithinAMillimetre) {
    open(WORDBM_SOURCE_DIR "/examples/Rechnung.docx");
    int framed = 0;
    for (const auto& mark : layout_->marks()) {
        const std::string text = doc_->Bookmarks()->Item(mark.bookmark)->Range()->Text();
        if (text.find('[') == std::string::npos) {
            continue; // a picture's place, or the payment part's own marks
        }
        EXPECT_EQ(mark.kind, FormLayout::MarkKind::Bookmark) << mark.bookmark;
        ASSERT_EQ(mark.boxes.size(), 1u) << mark.bookmark << " prints on one line";
        const PlacedBox& frame = mark.boxes.front();
        const auto covers = [&](const test::PrintedWordBox& w) {
            return w.page == frame.page && w.text.rfind(text, 0) == 0 &&
                   std::abs(w.left - frame.box.left) <= Millimetre &&
                   std::abs(w.top - frame.box.top) <= Millimetre &&
                   std::abs(w.bottom - frame.box.bottom) <= Millimetre &&
                   (w.text != text || std::abs(w.right - frame.box.right) <= Millimetre);
        };
        EXPECT_TRUE(std::any_of(words_.begin(), words_.end(), covers))
            << mark.bookmark << " framed at " << frame.box.left << "," << frame.box.top;
        ++framed;
    }
    EXPECT_EQ(framed, 22); // the bookmarks of the invoice's text; those of the payment part hold no brackets
}

TEST_F(FormLayoutTest, AClickFindsTheWordInTheStoryThatPrintsIt) {
    open(WORDBM_SOURCE_DIR "/examples/Rechnung.docx");
    EXPECT_EQ(clickedStoryType("Freundliche"), 1);
    EXPECT_EQ(clickedStoryType("Auslagen"), 1); // a table cell
    EXPECT_EQ(clickedStoryType("Lohnwesen"), 7);
    EXPECT_EQ(clickedStoryType("Einzahlung"), 5); // a text box of the payment part
    EXPECT_GE(wordsFoundWhereTheyStand(), 0.97);

    open(WORDBM_CORPUS_DIR "/docx/Fax.docx");
    EXPECT_EQ(clickedStoryType("Confidentiality"), 1);
    EXPECT_EQ(clickedStoryType("Office/Company:"), 1);
    EXPECT_EQ(clickedStoryType("Entity"), 5); // the letterhead's text box in the header
    // Its MACROBUTTON fields print their code's words ("[Name - jump to next field with F11]"),
    // which stand in no story's text; a few of them ("to", "xx") stand elsewhere as well.
    EXPECT_GE(wordsFoundWhereTheyStand(), 0.92);
}

TEST_F(FormLayoutTest, MergeFieldsAndUnknownBookmarksAreMarkedAsSuch) {
    open(WORDBM_CORPUS_DIR "/docx/mergefields.docx");
    const auto& marks = layout_->marks();
    const auto merge = std::count_if(marks.begin(), marks.end(), [](const FormLayout::Mark& m) {
        return m.kind == FormLayout::MarkKind::MergeField && !m.boxes.empty() && !m.label.empty();
    });
    EXPECT_GT(merge, 0);

    open(WORDBM_CORPUS_DIR "/docx/bmk-bookmarks.docx");
    const auto& others = layout_->marks();
    ASSERT_FALSE(others.empty());
    for (const auto& mark : others) {
        EXPECT_EQ(mark.kind, FormLayout::MarkKind::Unknown) << mark.bookmark;
        EXPECT_EQ(mark.label, mark.bookmark);
        // A click inside an unknown bookmark places the cursor instead of selecting it.
        for (const auto& placed : mark.boxes) {
            EXPECT_EQ(layout_->fieldAt(placed.page, placed.box.left + 0.5, placed.box.top + 0.5), nullptr);
        }
    }
}

TEST_F(FormLayoutTest, ASelectedPointIsTheSelectionOfTheDocument) {
    open(WORDBM_SOURCE_DIR "/examples/Rechnung.docx");
    const auto* word = printed("Lohnwesen");
    ASSERT_NE(word, nullptr);
    const auto point = clickOn(*word);
    ASSERT_TRUE(point);
    ASSERT_TRUE(layout_->select(*point));
    const auto selection = app_->Selection();
    EXPECT_EQ(selection->Range()->StoryType(), 7);
    EXPECT_EQ(selection->Start(), point->offset);
    EXPECT_EQ(selection->End(), point->offset);
    // A click in a field's frame finds the field; selecting it selects what it frames.
    const auto& mark = layout_->marks().front();
    ASSERT_FALSE(mark.boxes.empty());
    const PlacedBox& frame = mark.boxes.front();
    ASSERT_EQ(layout_->fieldAt(frame.page, (frame.box.left + frame.box.right) / 2,
                               (frame.box.top + frame.box.bottom) / 2),
              &mark);
    ASSERT_TRUE(layout_->select(mark));
    EXPECT_EQ(app_->Selection()->Start(), mark.start.offset);
    EXPECT_EQ(app_->Selection()->End(), mark.end);
}

} // namespace
} // namespace wordbm
