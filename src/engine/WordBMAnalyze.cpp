// The document walk and the analysis report of the engine.
#include "data/MergeFieldName.h"
#include "engine/WordBM.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Fields.h"
#include "engine/word/Range.h"
#include "engine/word/Sections.h"
#include "engine/word/Shapes.h"
#include "support/Strings.h"

#include <algorithm>
#include <exception>

namespace wordbm {

namespace {

constexpr const char* CrLf = "\r\n";

std::string number(int value) {
    return std::to_string(value);
}

std::string countsLine(const std::string& head, int total, int known) {
    return head + number(total) + "-total, " + number(known) + "-bekannt, " + number(total - known) +
           "-unbekannt";
}

} // namespace

void WordBM::TraceAdd(const std::string& text) {
    if (!trace_.empty()) {
        trace_ += CrLf;
    }
    trace_ += std::string(static_cast<std::size_t>(2 * std::max(depth_, 0)), ' ') + text;
}

void WordBM::traceOpen(const std::string& text) {
    TraceAdd(text);
    ++depth_;
}

void WordBM::traceClose(const std::string& text) {
    --depth_;
    TraceAdd(text);
}

void WordBM::DocumentWalk() {
    mergeFieldsTotal_ = 0;
    mergeFieldsKnown_ = 0;
    gathered_.clear();
    depth_ = 0;
    trace_.clear();
    if (!doc_) {
        return;
    }
    try {
        const word::FieldsPtr fields = doc_->Fields();
        TraceAdd("Document=" + doc_->Name() + " Filds=" + number(fields->Count()));
        FieldsWalk(fields);
    } catch (const std::exception&) {
        depth_ = 0;
    }
    try {
        const word::ShapesPtr shapes = doc_->Shapes();
        const int count = shapes->Count();
        traceOpen("Shapes=" + number(count));
        for (int i = 1; i <= count; ++i) {
            walkShape(shapes->Item(i));
        }
        traceClose("Shapes done");
    } catch (const std::exception&) {
        depth_ = 0;
    }
    try {
        const word::SectionsPtr sections = doc_->Sections();
        const int count = sections->Count();
        traceOpen("Sections=" + number(count));
        for (int i = 1; i <= count; ++i) {
            walkSection(sections->Item(i));
        }
        traceClose("Sections done");
    } catch (const std::exception&) {
        depth_ = 0;
    }
    TraceAdd("Document done");
    ui_.traceDisplay(trace_);
}

void WordBM::FieldsWalk(const word::FieldsPtr& fields) {
    const int depth = depth_;
    ++depth_;
    int count = 0;
    try {
        count = fields->Count();
    } catch (const std::exception&) {
        // Fields that cannot be counted are walked as none; the trace shows Fields=0.
    }
    TraceAdd("Fields=" + number(count));
    // The collection lists the fields nested in a field right after it.
    int nestedUpTo = 0;
    for (int i = 1; i <= count; ++i) {
        try {
            const word::FieldPtr field = fields->Item(i);
            const bool nested = i <= nestedUpTo;
            nestedUpTo = std::max(nestedUpTo, i + nestedFieldCount(field));
            const std::string code = field->Code()->Text();
            const auto name = MergeFieldName(code);
            if (!name) {
                continue;
            }
            ++mergeFieldsTotal_;
            // Blanks around the trimmed code keep the line readable whatever the code's own spacing.
            std::string line = "Field=" + *name + "( " + trim(code) + " )";
            if (!fields_.FieldKnown(*name).empty()) {
                ++mergeFieldsKnown_;
                line += " ISKNOWN";
                // A merge field in another field's code or result is part of that field: turned
                // into a bookmark or deleted it would break the outer field, so it stays as it is.
                if (nested) {
                    line += " NESTED";
                } else {
                    gathered_.push_back(field);
                }
            }
            ui_.processEvents();
            TraceAdd(line);
        } catch (const std::exception&) {
            // A field that cannot be read is passed over like one that is no merge field.
        }
    }
    TraceAdd("Fields done");
    depth_ = depth;
}

int WordBM::nestedFieldCount(const word::FieldPtr& field) {
    int count = 0;
    try {
        count += field->Code()->Fields()->Count();
    } catch (const std::exception&) {
        // A field without a code part holds no nested fields there.
    }
    try {
        count += field->Result()->Fields()->Count();
    } catch (const std::exception&) {
        // Nor one without a result part.
    }
    return count;
}

void WordBM::walkShape(const word::ShapePtr& shape) {
    const int depth = depth_;
    try {
        const word::TextFramePtr frame = shape->TextFrame();
        if (!frame->HasText()) {
            return;
        }
        const word::FieldsPtr fields = frame->TextRange()->Fields();
        if (fields->Count() == 0) {
            return;
        }
        const std::string name = shape->Name();
        traceOpen("Shape " + name);
        FieldsWalk(fields);
        traceClose("Shape " + name + " done");
    } catch (const std::exception&) {
        depth_ = depth;
    }
}

void WordBM::walkSection(const word::SectionPtr& section) {
    const int depth = depth_;
    try {
        traceOpen("Section " + number(section->Index()));
        walkHeadersFooters(section->Headers(), "Header", "Header");
        walkHeadersFooters(section->Footers(), "Footer", "Footer ");
        traceClose("Section done");
    } catch (const std::exception&) {
        depth_ = depth;
    }
}

// A header's closing line has no blank before its number, a footer's has one; both are kept so.
void WordBM::walkHeadersFooters(const word::HeadersFootersPtr& parts, const std::string& kind,
                                const std::string& closing) {
    const int depth = depth_;
    try {
        const int count = parts->Count();
        traceOpen(kind + "s=" + number(count));
        for (int i = 1; i <= count; ++i) {
            const int partDepth = depth_;
            try {
                const word::HeaderFooterPtr part = parts->Item(i);
                const std::string index = number(part->Index());
                traceOpen(kind + " " + index);
                const word::ShapesPtr shapes = part->Shapes();
                const int shapeCount = shapes->Count();
                traceOpen("Shapes=" + number(shapeCount));
                for (int s = 1; s <= shapeCount; ++s) {
                    walkShape(shapes->Item(s));
                }
                traceClose("Shapes done");
                FieldsWalk(part->Range()->Fields());
                traceClose(closing + index + " done");
            } catch (const std::exception&) {
                depth_ = partDepth;
            }
        }
        traceClose(kind + "s done");
    } catch (const std::exception&) {
        depth_ = depth;
    }
}

std::vector<std::string> WordBM::bookmarkNames() {
    std::vector<std::string> names;
    const word::BookmarksPtr bookmarks = doc_->Bookmarks();
    const int count = bookmarks->Count();
    names.reserve(static_cast<std::size_t>(count));
    for (int i = 1; i <= count; ++i) {
        names.push_back(bookmarks->Item(i)->Name());
    }
    return names;
}

std::string WordBM::bookmarkLine() {
    bookmarksTotal_ = 0;
    bookmarksKnown_ = 0;
    try {
        for (const std::string& name : bookmarkNames()) {
            ++bookmarksTotal_;
            if (!fields_.BookmarkFieldGet(name).empty()) {
                ++bookmarksKnown_;
            }
        }
    } catch (const std::exception&) {
        // Counted as far as the document could be read.
    }
    return countsLine("Textfelder: ", bookmarksTotal_, bookmarksKnown_);
}

void WordBM::CountsShow() {
    if (!doc_) {
        return;
    }
    const int exportFields = static_cast<int>(fields_.Items().size()) - fields_.SeparatorCount();
    bookmarkLine();
    DocumentWalk();
    ui_.countsDisplay({exportFields, bookmarksTotal_, bookmarksKnown_, mergeFieldsTotal_, mergeFieldsKnown_});
}

void WordBM::mfWBM_Analyze() {
    if (!CheckDoc(true)) {
        return;
    }
    const int exportFields = static_cast<int>(fields_.Items().size()) - fields_.SeparatorCount();
    std::string report = "KDX5-Exportfelder: " + number(exportFields) + "-total";
    const auto addLine = [&report](const std::string& line) {
        if (!line.empty()) {
            report += CrLf + line;
        }
    };
    addLine(BookmarksConvert());
    addLine(bookmarkLine());
    DocumentWalk();
    addLine(countsLine("Seriendruckfelder: ", mergeFieldsTotal_, mergeFieldsKnown_));
    ui_.countsDisplay({exportFields, bookmarksTotal_, bookmarksKnown_, mergeFieldsTotal_, mergeFieldsKnown_});
    if (word_) {
        MyMsgBox(report, msgbox::Information, Title);
    }
}

} // namespace wordbm
