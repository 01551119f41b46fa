#include "engine/slip/SlipBoxFitter.h"

#include "engine/slip/SlipCanvasName.h"
#include "engine/slip/SlipValue.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Font.h"
#include "engine/word/Range.h"
#include "engine/word/Shapes.h"
#include "engine/word/TextLength.h"
#include "engine/word/WordConstants.h"
#include "qrbill/QRCoder.h"
#include "support/Strings.h"

#include <algorithm>

namespace wordbm {

namespace {

// The inner margins the builder gives every text box: Word's 0.1 in at the sides, 0.05 in above
// and below.
constexpr float SideInset = 7.2F;
constexpr float EdgeInset = 3.6F;

bool lineEnd(char c) {
    return c == SlipValue::LineBreak || c == '\r' || c == '\n';
}

// One line of a box's story: where it starts (in Range units) and how long it is.
struct StoryLine {
    long start = 0;
    long length = 0;
    SlipFit::Line line;
};

std::vector<StoryLine> storyLines(word::Range& story, const std::string& text) {
    std::vector<StoryLine> lines;
    const long storyStart = story.Start();
    long units = 0;
    std::size_t from = 0;
    for (std::size_t at = 0; at <= text.size(); ++at) {
        if (at < text.size() && !lineEnd(text[at])) {
            continue;
        }
        const std::string piece = text.substr(from, at - from);
        const long length = word::TextLength(piece);
        if (at < text.size() || !piece.empty()) {
            // An empty line takes the height of the break that makes it.
            story.SetRange(storyStart + units, storyStart + units + 1);
            const word::FontPtr font = story.Font();
            lines.push_back({storyStart + units, length, {piece, font->Size(), font->Bold()}});
        }
        units += length + 1;
        from = at + 1;
    }
    return lines;
}

void addLines(std::map<std::string, SlipFit::Give, std::less<>>& roles, const std::string& value,
              SlipFit::Give give) {
    for (const std::string& line : split(value, "\r\n")) {
        if (!trim(line).empty()) {
            roles.emplace(trim(line), give);
        }
    }
}

} // namespace

void SlipBoxFitter::Fit(word::Document& doc, const QRCoder& coder, std::int32_t row) const {
    const Roles roles = RolesOf(coder, row);
    for (const word::ShapePtr& box : Boxes(doc)) {
        fitBox(*box, roles);
    }
}

std::vector<word::ShapePtr> SlipBoxFitter::Boxes(word::Document& doc) {
    std::vector<word::ShapePtr> boxes;
    for (const char* code : {"ET", "ZT"}) {
        for (const word::ShapePtr& canvas : SlipCanvasName::Canvases(doc, code)) {
            const word::CanvasShapesPtr items = canvas->CanvasItems();
            for (int index = 1; index <= items->Count(); ++index) {
                word::ShapePtr box = items->Item(index);
                if (box->Type() == word::wd::msoTextBox) {
                    boxes.push_back(std::move(box));
                }
            }
        }
    }
    return boxes;
}

std::vector<SlipFit::Line> SlipBoxFitter::LinesOf(word::Shape& box) {
    const word::TextFramePtr frame = box.TextFrame();
    if (!frame || !frame->HasText()) {
        return {};
    }
    const word::RangePtr story = frame->TextRange();
    std::vector<SlipFit::Line> lines;
    for (StoryLine& line : storyLines(*story, story->Text())) {
        lines.push_back(std::move(line.line));
    }
    return lines;
}

SlipBoxFitter::Roles SlipBoxFitter::RolesOf(const QRCoder& coder, std::int32_t row) {
    Roles roles;
    // The account number above the creditor's address and the reference stay whole: they are
    // what the payer types.
    addLines(roles, coder.KontoAn(row), SlipFit::Give::Address);
    addLines(roles, coder.KontoVon(row), SlipFit::Give::Address);
    roles.erase(trim(coder.IBAN(row)));
    addLines(roles, coder.Zusatz(row), SlipFit::Give::Message);
    return roles;
}

void SlipBoxFitter::giveRoles(std::vector<SlipFit::Line>& lines, const Roles& roles) {
    for (SlipFit::Line& line : lines) {
        const auto role = roles.find(trim(line.text));
        line.give = role != roles.end() && !line.bold ? role->second : SlipFit::Give::Nothing;
    }
}

SlipFit SlipBoxFitter::fitOf(float width, float height) const {
    return SlipFit(font_, width - 2 * SideInset, height - 2 * EdgeInset);
}

bool SlipBoxFitter::LeavesAlone(std::vector<SlipFit::Line> lines, const Roles& roles, float width,
                                float height) const {
    giveRoles(lines, roles);
    // A box without the row's message or addresses holds what the builder wrote into it.
    const bool mayGive = std::any_of(lines.begin(), lines.end(), [](const SlipFit::Line& line) {
        return line.give != SlipFit::Give::Nothing;
    });
    return !mayGive || fitOf(width, height).Fits(lines);
}

void SlipBoxFitter::fitBox(word::Shape& box, const Roles& roles) const {
    const word::TextFramePtr frame = box.TextFrame();
    if (!frame || !frame->HasText()) {
        return;
    }
    word::RangePtr story = frame->TextRange();
    std::vector<StoryLine> lines = storyLines(*story, story->Text());
    std::vector<SlipFit::Line> fitLines;
    for (const StoryLine& line : lines) {
        fitLines.push_back(line.line);
    }
    if (LeavesAlone(fitLines, roles, box.Width(), box.Height())) {
        return;
    }
    giveRoles(fitLines, roles);
    const SlipFit fit = fitOf(box.Width(), box.Height());
    const std::vector<SlipFit::Line> fitted = fit.Fitted(fitLines);
    // From the last line up, so that the places of the lines above stay where they were.
    for (std::size_t i = lines.size(); i-- > 0;) {
        if (fitted[i].text != lines[i].line.text) {
            story = frame->TextRange();
            story->SetRange(lines[i].start, lines[i].start + lines[i].length);
            story->Text(fitted[i].text);
        }
    }
    if (!fit.Fits(fitted)) {
        throw AutomationError("Der Text passt nicht in sein Feld des Einzahlungsscheins: " +
                              (fitted.empty() ? std::string() : fitted.front().text));
    }
}

} // namespace wordbm
