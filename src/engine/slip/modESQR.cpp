#include "engine/slip/modESQR.h"

#include "engine/ports/UserInterface.h"
#include "engine/slip/SlipBoxPlan.h"
#include "engine/slip/SlipBoxWriter.h"
#include "engine/slip/SlipCanvasName.h"
#include "engine/slip/SlipFont.h"
#include "engine/slip/SlipValue.h"
#include "engine/word/Application.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Range.h"
#include "engine/word/Sections.h"
#include "engine/word/Selection.h"
#include "engine/word/Shapes.h"
#include "engine/word/TextLength.h"
#include "qrbill/QRCoder.h"
#include "qrbill/QRImage.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace wordbm {

namespace {

constexpr std::string_view SlipPrefix = "ESQR";
constexpr std::string_view HeadingSuffix = "TX";
constexpr std::string_view Open = "[";
constexpr std::string_view Close = "]";
constexpr int DeletePasses = 3;

using Getter = std::string (QRCoder::*)(std::int32_t) const;

struct ValueSource {
    Getter get = nullptr; // none: the placeholder is only cleared
    int breaks = 1;
    std::optional<SlipMarks::Field> markWhenEmpty;
};

const std::map<std::string, ValueSource, std::less<>>& values() {
    static const std::map<std::string, ValueSource, std::less<>> table{
        {"ESQRIBAN", {&QRCoder::IBAN, 1, {}}},
        {"ESQRKontoAn", {&QRCoder::KontoAn, 2, {}}},
        {"ESQRReferenz", {&QRCoder::Referenz, 2, {}}},
        {"ESQRZusatz", {&QRCoder::Zusatz, 2, {}}},
        {"ESQRKontoVon", {&QRCoder::KontoVon, 1, SlipMarks::Field::Debtor}},
        {"ESQRWaehrung", {&QRCoder::Waehrung, 1, {}}},
        {"ESQRBetrag", {&QRCoder::Betrag, 1, SlipMarks::Field::Amount}},
        {"ESQRInfo", {&QRCoder::Info, 1, {}}},
        {"ESQRAnnahmestelle", {}},
        {"ESQRAbzutrennen", {}},
    };
    return table;
}

// Headings that go with their value when the row leaves the value empty; the QR code's heading has
// no value of its own and always goes.
const std::map<std::string, Getter, std::less<>>& headingsWithValue() {
    static const std::map<std::string, Getter, std::less<>> table{
        {"ESQRReferenzTX", &QRCoder::Referenz},
        {"ESQRZusatzTX", &QRCoder::Zusatz},
        {"ESQRInfoTX", &QRCoder::Info},
        {"ESQRQRCodeTX", nullptr},
    };
    return table;
}

// The value as written over its placeholder, without the line breaks behind it.
std::string core(const std::string& value, int breaks) {
    std::string text = SlipValue::Written(value, breaks);
    text.resize(text.size() - std::min(text.size(), static_cast<std::size_t>(std::max(breaks, 1))));
    return text;
}

bool markNeeded(SlipMarks::Field field, const std::string& value) {
    return field == SlipMarks::Field::Amount ? SlipValue::Blank(value)
                                             : SlipValue::EmptyWithoutLineEnds(value);
}

// The body of the page the form opens on ends above the slip, so that no line of it, in a table
// or not, is ever printed over the payment part; what does not fit flows on to the next page.
// Word and LibreOffice both keep to a section's margins, table rows included; wrapping the canvases
// would not stop table rows in LibreOffice, and a canvas anchored in a table cell would be held in it.
void keepBodyAbove(word::Document& doc, const SlipChoices& choices) {
    float top = SlipLayout::PageHeightMm;
    for (const auto& [chosen, layout] :
         {std::pair{choices.ST, &SlipLayout::separation()}, std::pair{choices.ET, &SlipLayout::receipt()},
          std::pair{choices.ZT, &SlipLayout::paymentPart()}}) {
        if (chosen) {
            top = std::min(top, layout->top - SlipLayout::BoxShiftMm);
        }
    }
    if (top >= SlipLayout::PageHeightMm) {
        return;
    }
    const word::PageSetupPtr page = doc.Sections()->Item(1)->PageSetup();
    const float needed = page->PageHeight() - SlipLayout::points(top - SlipLayout::TextDistanceMm);
    if (page->BottomMargin() < needed) {
        page->BottomMargin(needed);
    }
}

} // namespace

modESQR::modESQR(UserInterface& ui, QRImage& qrImage, std::string imageFolder)
    : ui_(ui), qrImage_(qrImage), marks_(std::move(imageFolder)), fitter_(SlipFont::Arial()) {}

bool modESQR::IsSlipName(std::string_view name) {
    return name.substr(0, SlipPrefix.size()) == SlipPrefix;
}

// --- Building ---

void modESQR::Build(word::Application& word, word::Document& doc, const SlipChoices& choices) {
    fieldBorders_ = choices.fieldBorders;
    language_ = choices.language;
    if (choices.deleteExisting) {
        deleteCanvases(doc);
    }
    // Typing into the boxes takes the cursor away; every canvas is anchored where it stood.
    const word::RangePtr anchor = word.Selection()->Range();
    if (choices.ST) {
        addCanvas(word, doc, anchor, SlipLayout::separation(), choices.STborder);
    }
    if (choices.ET) {
        addCanvas(word, doc, anchor, SlipLayout::receipt(), choices.ETborder);
    }
    if (choices.ZT) {
        addCanvas(word, doc, anchor, SlipLayout::paymentPart(), choices.ZTborder);
    }
    keepBodyAbove(doc, choices);
    anchor->Select();
}

void modESQR::deleteCanvases(word::Document& doc) {
    // Every canvas of the document goes, the slip's and any other. Walking backwards skips none as
    // the collection shrinks; the further passes catch whatever a failing deletion left behind.
    for (int pass = 0; pass < DeletePasses; ++pass) {
        const word::ShapesPtr shapes = doc.Shapes();
        for (int index = shapes->Count(); index >= 1; --index) {
            const word::ShapePtr shape = shapes->Item(index);
            if (shape->Type() == word::wd::msoCanvas) {
                shape->Delete();
                ui_.processEvents();
            }
        }
    }
}

void modESQR::addCanvas(word::Application& word, word::Document& doc, const word::RangePtr& anchor,
                        const SlipLayout::Canvas& layout, bool cutMark) {
    using L = SlipLayout;
    const word::ShapePtr canvas =
        doc.Shapes()->AddCanvas(L::points(layout.left), L::points(layout.top), L::points(layout.width),
                                L::points(layout.height), anchor);
    canvas->Name(SlipCanvasName::Current(layout.code));
    bool framed = false;
    SlipBoxWriter writer(word, doc, texts_, language_);
    for (const L::Box& box : layout.boxes) {
        const word::ShapePtr shape = canvas->CanvasItems()->AddTextbox(
            1, L::points(box.left - L::BoxShiftMm), L::points(box.top - L::BoxShiftMm), L::points(box.width),
            L::points(box.height));
        const bool frame = box.entries.empty();
        framed = framed || frame;
        shape->Line()->Visible(frame ? cutMark : fieldBorders_);
        if (!frame) {
            writer.Write(*shape, box, layout.sizes);
        }
    }
    if (!framed) {
        // The separation text has no frame: its cut mark is the canvas's own outline.
        canvas->Line()->Visible(cutMark);
    }
}

// --- Filling ---

void modESQR::Fill(word::Application& word, word::Document& doc, word::Bookmark& placeholder,
                   const std::string& field, const QRCoder& coder, std::int32_t row) {
    fill(word, doc, placeholder, field, coder, row, nullptr);
}

void modESQR::FillStandIn(word::Application& word, word::Document& doc, word::Bookmark& placeholder,
                          const std::string& field, const QRCoder& coder, std::int32_t row,
                          const std::function<std::string()>& standIn) {
    fill(word, doc, placeholder, field, coder, row, &standIn);
}

void modESQR::fill(word::Application& word, word::Document& doc, word::Bookmark& placeholder,
                   const std::string& field, const QRCoder& coder, std::int32_t row,
                   const std::function<std::string()>* standIn) {
    removeBrackets(word, placeholder);
    if (field == "ESQRQRCode") {
        pasteQRCode(word, placeholder, coder, row);
    } else if (field.ends_with(HeadingSuffix)) {
        keepOrClearHeading(placeholder, field, coder, row);
    } else {
        writeValue(doc, placeholder, field, coder, row, standIn);
    }
}

std::string modESQR::Shape(const QRCoder& coder, std::int32_t row) const {
    std::string shape;
    for (const auto& [field, value] : values()) {
        const std::string text = value.get ? (coder.*value.get)(row) : std::string();
        // Only a value with text of its own stands in; the others are written as they are.
        shape += SlipValue::Blank(text) ? 'b' : core(text, value.breaks).empty() ? 'e' : 'v';
        if (value.markWhenEmpty) {
            shape += markNeeded(*value.markWhenEmpty, text) ? 'm' : '-';
        }
    }
    return shape;
}

std::string modESQR::Value(const std::string& field, const QRCoder& coder, std::int32_t row) const {
    const auto found = values().find(field);
    if (found == values().end() || !found->second.get) {
        return {};
    }
    return core((coder.*found->second.get)(row), found->second.breaks);
}

std::unique_ptr<SlipFitCheck> modESQR::FitCheck(word::Document& doc,
                                                const std::vector<std::string>& standIns) const {
    return std::make_unique<SlipBoxPlan>(fitter_, doc, standIns);
}

void modESQR::Finish(word::Document& doc, const QRCoder& coder, std::int32_t row) {
    fitter_.Fit(doc, coder, row);
}

void modESQR::removeBrackets(word::Application& word, word::Bookmark& placeholder) {
    const word::SelectionPtr selection = word.Selection();
    placeholder.Select();
    // The first step collapses the selection to the placeholder's start, behind "[".
    selection->MoveLeft(word::wd::wdCharacter, static_cast<int>(word::TextLength(Open)));
    for (long i = 0; i < word::TextLength(Open); ++i) {
        selection->TypeBackspace();
    }
    placeholder.Select();
    // Collapse to the end, then step over "]".
    selection->MoveRight(word::wd::wdCharacter, static_cast<int>(word::TextLength(Close) + 1));
    for (long i = 0; i < word::TextLength(Close); ++i) {
        selection->TypeBackspace();
    }
}

void modESQR::writeValue(word::Document& doc, word::Bookmark& placeholder, const std::string& field,
                         const QRCoder& coder, std::int32_t row,
                         const std::function<std::string()>* standIn) {
    const auto found = values().find(field);
    if (found == values().end()) {
        return;
    }
    const ValueSource& value = found->second;
    const std::string text = value.get ? (coder.*value.get)(row) : std::string();
    // A value without text of its own leaves no place where a text could go later.
    const std::string written = standIn && !core(text, value.breaks).empty() ? (*standIn)() : text;
    placeholder.Range()->Text(value.get ? SlipValue::Written(written, value.breaks) : std::string());
    if (value.markWhenEmpty && markNeeded(*value.markWhenEmpty, text)) {
        marks_.Place(doc, *value.markWhenEmpty);
    }
}

void modESQR::keepOrClearHeading(word::Bookmark& placeholder, const std::string& field, const QRCoder& coder,
                                 std::int32_t row) {
    const auto found = headingsWithValue().find(field);
    if (found == headingsWithValue().end()) {
        return;
    }
    const Getter value = found->second;
    if (!value || SlipValue::Blank((coder.*value)(row))) {
        placeholder.Range()->Text({});
    }
}

void modESQR::pasteQRCode(word::Application& word, word::Bookmark& placeholder, const QRCoder& coder,
                          std::int32_t row) {
    placeholder.Select();
    const word::SelectionPtr selection = word.Selection();
    selection->TypeBackspace();
    qrImage_.Encode(coder.QRText(row));
    if (!qrImage_.ClipboardCopy()) {
        throw AutomationError(qrImage_.lastError());
    }
    // The embedded word processor pastes at once, so there is nothing to wait for before the next
    // placeholder; and a fill may run on a merge worker's thread, where the user interface is off limits.
    selection->Paste();
}

} // namespace wordbm
