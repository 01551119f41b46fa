#include "engine/FormStories.h"

#include "engine/word/Document.h"
#include "engine/word/Range.h"
#include "engine/word/Sections.h"
#include "engine/word/Shapes.h"
#include "engine/word/WordConstants.h"

#include <array>
#include <exception>

namespace wordbm {

namespace {

// By Word's index: primary, first page, even pages.
constexpr std::array<const char*, 3> PageKinds = {"", " erste Seite", " gerade Seiten"};

void addHeadersFooters(std::vector<FormStory>& stories, const word::HeadersFootersPtr& parts,
                       const char* kind, int section) {
    for (int i = 1; i <= parts->Count(); ++i) {
        try {
            const auto part = parts->Item(i);
            if (part->Exists() && !part->LinkToPrevious()) {
                stories.push_back({std::string(kind) + PageKinds[static_cast<std::size_t>(i - 1)] +
                                       " (Abschnitt " + std::to_string(section) + ")",
                                   part->Range(), true});
            }
        } catch (const std::exception&) {
            // A header or footer the word processor cannot give is left out; the others are still shown.
        }
    }
}

void addTextBox(std::vector<FormStory>& stories, const word::ShapePtr& shape, const std::string& where,
                bool everyPage) {
    try {
        if (shape->Type() == word::wd::msoCanvas) {
            const auto items = shape->CanvasItems();
            for (int i = 1; i <= items->Count(); ++i) {
                addTextBox(stories, items->Item(i), where, everyPage);
            }
            return;
        }
        stories.push_back({"Textfeld " + shape->Name() + where, shape->TextFrame()->TextRange(), everyPage});
    } catch (const std::exception&) {
        // A picture or a line: no text of its own.
    }
}

void addTextBoxes(std::vector<FormStory>& stories, const word::ShapesPtr& shapes, const std::string& where,
                  bool everyPage) {
    for (int i = 1; i <= shapes->Count(); ++i) {
        addTextBox(stories, shapes->Item(i), where, everyPage);
    }
}

} // namespace

std::vector<FormStory> FormStories::list(word::Document& doc) {
    std::vector<FormStory> stories{{"", doc.Content()}};
    const auto sections = doc.Sections();
    for (int s = 1; s <= sections->Count(); ++s) {
        const auto section = sections->Item(s);
        addHeadersFooters(stories, section->Headers(), "Kopfzeile", s);
        addHeadersFooters(stories, section->Footers(), "Fusszeile", s);
    }
    addTextBoxes(stories, doc.Shapes(), "", false);
    if (sections->Count() > 0) {
        // Any header's shapes are those of all headers and footers.
        addTextBoxes(stories, sections->Item(1)->Headers()->Item(word::wd::wdHeaderFooterPrimary)->Shapes(),
                     " (Kopf- und Fusszeilen)", true);
    }
    return stories;
}

} // namespace wordbm
