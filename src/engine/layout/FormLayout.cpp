#include "engine/layout/FormLayout.h"

#include "data/KnownFields.h"
#include "data/MergeFieldName.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Fields.h"
#include "engine/word/Range.h"
#include "engine/word/WordConstants.h"
#include "support/Strings.h"

#include <algorithm>
#include <exception>

namespace wordbm {

namespace {

// Story offsets count UTF-16 units, as Word's do.
std::u16string utf16Of(const std::string& utf8) {
    std::u16string result;
    for (std::size_t i = 0; i < utf8.size();) {
        const std::size_t length = utf8SequenceLength(utf8, i);
        if (length == 0) {
            result.push_back(static_cast<unsigned char>(utf8[i]));
            ++i;
            continue;
        }
        const auto byte = [&](std::size_t k) { return static_cast<char32_t>(utf8[i + k]) & 0x3F; };
        char32_t c = static_cast<char32_t>(static_cast<unsigned char>(utf8[i])) & (0x7F >> length);
        for (std::size_t k = 1; k < length; ++k) {
            c = (c << 6) | byte(k);
        }
        if (c >= 0x10000) {
            result.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
            result.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        } else {
            result.push_back(static_cast<char16_t>(c));
        }
        i += length;
    }
    return result;
}

} // namespace

FormLayout::FormLayout(std::vector<FormStory> stories, std::vector<PrintedPage> pages, PageMap map)
    : stories_(std::move(stories)), pages_(std::move(pages)), map_(std::move(map)) {}

std::shared_ptr<FormLayout> FormLayout::make(word::Document& doc, const KnownFields& fields,
                                             const std::string& pdfPath) {
    std::vector<FormStory> stories = FormStories::list(doc);
    doc.ExportAsFixedFormat(pdfPath, word::wd::wdExportFormatPDF);
    std::vector<PrintedPage> pages = PrintedPages::read(pdfPath);
    if (pages.empty()) {
        throw AutomationError("Die PDF-Datei des Formulars ist nicht lesbar");
    }
    std::vector<PageMap::Story> texts;
    for (const FormStory& story : stories) {
        std::u16string text;
        try {
            text = utf16Of(story.range->Text());
        } catch (const std::exception&) {
            // A story that cannot be read places nothing; the others still do.
        }
        texts.push_back({std::move(text), story.everyPage});
    }
    PageMap map(texts, pages);
    std::shared_ptr<FormLayout> layout(new FormLayout(std::move(stories), std::move(pages), std::move(map)));
    layout->addMarks(fields);
    return layout;
}

void FormLayout::addMarks(const KnownFields& fields) {
    for (int s = 0; s < static_cast<int>(stories_.size()); ++s) {
        const word::RangePtr& range = stories_[static_cast<std::size_t>(s)].range;
        try {
            const auto bookmarks = range->Bookmarks();
            for (int i = 1; i <= bookmarks->Count(); ++i) {
                const auto bookmark = bookmarks->Item(i);
                const std::string name = bookmark->Name();
                const std::string field = fields.BookmarkFieldGet(name);
                addMark(field.empty() ? MarkKind::Unknown : MarkKind::Bookmark, field.empty() ? name : field,
                        name, s, bookmark->Start(), bookmark->End());
            }
            const auto found = range->Fields();
            for (int i = 1; i <= found->Count(); ++i) {
                const auto field = found->Item(i);
                if (const auto name = MergeFieldName(field->Code()->Text())) {
                    const auto result = field->Result();
                    addMark(MarkKind::MergeField, *name, {}, s, result->Start(), result->End());
                }
            }
        } catch (const std::exception&) {
            // What the word processor cannot tell of a story is left unmarked.
        }
    }
}

void FormLayout::addMark(MarkKind kind, std::string label, std::string bookmark, int story, long start,
                         long end) {
    Mark mark{
        kind, std::move(label), std::move(bookmark), {story, start}, end, map_.boxes(story, start, end)};
    marks_.push_back(std::move(mark));
}

const std::string& FormLayout::storyLabel(int story) const {
    static const std::string none;
    return story >= 0 && story < static_cast<int>(stories_.size())
               ? stories_[static_cast<std::size_t>(story)].label
               : none;
}

bool FormLayout::select(const StoryPoint& point) {
    if (point.story < 0 || point.story >= static_cast<int>(stories_.size())) {
        return false;
    }
    try {
        const word::RangePtr& range = stories_[static_cast<std::size_t>(point.story)].range;
        range->SetRange(point.offset, point.offset);
        range->Select();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool FormLayout::select(const Mark& mark) {
    if (mark.start.story < 0 || mark.start.story >= static_cast<int>(stories_.size())) {
        return false;
    }
    try {
        const word::RangePtr& range = stories_[static_cast<std::size_t>(mark.start.story)].range;
        range->SetRange(mark.start.offset, mark.end);
        range->Select();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

const FormLayout::Mark* FormLayout::fieldAt(int page, double x, double y) const {
    const Mark* best = nullptr;
    double bestArea = 0;
    for (const Mark& mark : marks_) {
        if (mark.kind == MarkKind::Unknown) {
            continue;
        }
        for (const PlacedBox& placed : mark.boxes) {
            const double area = placed.box.width() * placed.box.height();
            if (placed.page == page && placed.box.contains(x, y) && (!best || area < bestArea)) {
                best = &mark;
                bestArea = area;
            }
        }
    }
    return best;
}

} // namespace wordbm
