#include "FakeWord.h"

#include "engine/word/AutomationError.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Fields.h"
#include "engine/word/Range.h"
#include "engine/word/Sections.h"
#include "engine/word/Selection.h"
#include "engine/word/Shapes.h"
#include "support/Strings.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

namespace wordbm::fake {

namespace {

[[noreturn]] void unsupported() {
    throw AutomationError("Vom Testdokument nicht unterstützt.");
}

std::shared_ptr<FieldRecord> copyOf(const std::shared_ptr<FieldRecord>& field) {
    return std::make_shared<FieldRecord>(*field);
}

bool validBookmarkName(const std::string& name) {
    if (name.empty() || name.size() > 40 || !std::isalpha(static_cast<unsigned char>(name[0]))) {
        return false;
    }
    return std::all_of(name.begin(), name.end(),
                       [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; });
}

class FakeRange;

class FakeSelection : public word::Selection {
public:
    explicit FakeSelection(std::shared_ptr<DocState> doc) : doc_(std::move(doc)) {}
    long Start() const override { return cursor().start; }
    long End() const override { return cursor().end; }
    std::string Text() const override {
        const Cursor& c = cursor();
        return doc_->form.stories[static_cast<std::size_t>(c.story)].substr(
            static_cast<std::size_t>(c.start), static_cast<std::size_t>(c.end - c.start));
    }
    word::RangePtr Range() override;
    word::FontPtr Font() override { unsupported(); }
    int HomeKey(int, int) override {
        Cursor& c = cursor();
        c.start = c.end = 0;
        return 1;
    }
    void TypeText(const std::string& text) override {
        Cursor& c = cursor();
        doc_->form.replace(c.story, c.start, c.end, text);
        c.start = c.end = c.start + static_cast<long>(text.size());
    }
    int MoveLeft(int unit, int count, int extend) override {
        Cursor& c = cursor();
        if (unit != word::wd::wdCharacter) {
            unsupported();
        }
        int moved = 0;
        if (extend == word::wd::wdMove && c.start < c.end) {
            c.end = c.start;
            ++moved;
        }
        const long steps = std::min<long>(count - moved, c.start);
        c.start -= steps;
        if (extend == word::wd::wdMove) {
            c.end = c.start;
        }
        return moved + static_cast<int>(steps);
    }
    int MoveRight(int unit, int count, int extend) override {
        Cursor& c = cursor();
        if (unit != word::wd::wdCharacter || extend != word::wd::wdMove) {
            unsupported();
        }
        int moved = 0;
        if (c.start < c.end) {
            c.start = c.end;
            ++moved;
        }
        const long steps = std::min<long>(count - moved, doc_->form.length(c.story) - c.end);
        c.start = c.end = c.end + steps;
        return moved + static_cast<int>(steps);
    }
    void TypeBackspace() override {
        Cursor& c = cursor();
        if (c.start == c.end && c.start > 0) {
            --c.start;
        }
        doc_->form.replace(c.story, c.start, c.end, "");
        c.end = c.start;
    }
    void Paste() override { unsupported(); }
    void SetRange(long start, long end) override {
        Cursor& c = cursor();
        c.start = start;
        c.end = end;
    }

private:
    Cursor& cursor() const {
        doc_->check();
        return doc_->selection;
    }
    std::shared_ptr<DocState> doc_;
};

class FakeTextRange : public word::Range {
public:
    explicit FakeTextRange(std::string text) : text_(std::move(text)) {}
    long Start() const override { return 0; }
    long End() const override { return static_cast<long>(text_.size()); }
    int StoryType() const override { return 1; }
    std::string Text() const override { return text_; }
    void Text(const std::string&) override { unsupported(); }
    void InsertAfter(const std::string&) override { unsupported(); }
    word::FieldsPtr Fields() override { unsupported(); }
    word::BookmarksPtr Bookmarks() override { unsupported(); }
    word::FontPtr Font() override { unsupported(); }
    void Select() override { unsupported(); }
    void SetRange(long, long) override { unsupported(); }

private:
    std::string text_;
};

class FakeField : public word::Field {
public:
    FakeField(std::shared_ptr<DocState> doc, std::shared_ptr<FieldRecord> record)
        : doc_(std::move(doc)), record_(std::move(record)) {}
    word::RangePtr Code() override { return std::make_shared<FakeTextRange>(live().code); }
    word::RangePtr Result() override;
    void Select() override {
        const FieldRecord& f = live();
        doc_->selection = {f.story, f.start, f.end};
    }
    void Delete() override {
        const FieldRecord& f = live();
        doc_->form.replace(f.story, f.start, f.end, "");
    }

private:
    const FieldRecord& live() const {
        doc_->check();
        if (!record_->alive) {
            throw AutomationError("Das Objekt wurde gelöscht.");
        }
        return *record_;
    }
    std::shared_ptr<DocState> doc_;
    std::shared_ptr<FieldRecord> record_;
};

class FakeFields : public word::Fields {
public:
    // `owner`: the field whose result the range is, which Word does not count among its fields.
    FakeFields(std::shared_ptr<DocState> doc, int story, long start, long end,
               const FieldRecord* owner = nullptr)
        : doc_(std::move(doc)) {
        for (const auto& f : doc_->form.fields) {
            if (f->alive && f.get() != owner && f->story == story && f->start >= start && f->end <= end) {
                records_.push_back(f);
            }
        }
        std::stable_sort(records_.begin(), records_.end(),
                         [](const auto& a, const auto& b) { return a->start < b->start; });
    }
    int Count() const override {
        doc_->check();
        return static_cast<int>(records_.size());
    }
    word::FieldPtr Item(int index) override {
        doc_->check();
        if (index < 1 || index > Count()) {
            throw AutomationError("Das angeforderte Element ist nicht vorhanden.");
        }
        return std::make_shared<FakeField>(doc_, records_[static_cast<std::size_t>(index - 1)]);
    }

private:
    std::shared_ptr<DocState> doc_;
    std::vector<std::shared_ptr<FieldRecord>> records_;
};

class FakeRange : public word::Range {
public:
    FakeRange(std::shared_ptr<DocState> doc, int story, long start, long end,
              const FieldRecord* owner = nullptr)
        : doc_(std::move(doc)), story_(story), start_(start), end_(end), owner_(owner) {}
    int story() const { return story_; }
    long Start() const override { return start_; }
    long End() const override { return end_; }
    int StoryType() const override {
        return story_ < 0 ? 0 : doc_->form.storyTypes[static_cast<std::size_t>(story_)];
    }
    std::string Text() const override {
        doc_->check();
        if (story_ < 0) {
            return {};
        }
        return doc_->form.stories[static_cast<std::size_t>(story_)].substr(
            static_cast<std::size_t>(start_), static_cast<std::size_t>(end_ - start_));
    }
    void Text(const std::string& text) override {
        doc_->check();
        doc_->form.replace(story_, start_, end_, text);
        end_ = start_ + static_cast<long>(text.size());
    }
    void InsertAfter(const std::string&) override { unsupported(); }
    word::FieldsPtr Fields() override {
        doc_->check();
        return std::make_shared<FakeFields>(doc_, story_, start_, end_, owner_);
    }
    word::BookmarksPtr Bookmarks() override { unsupported(); }
    word::FontPtr Font() override { unsupported(); }
    void Select() override {
        doc_->check();
        doc_->selection = {story_, start_, end_};
    }
    void SetRange(long start, long end) override {
        start_ = start;
        end_ = end;
    }

private:
    std::shared_ptr<DocState> doc_;
    int story_;
    long start_;
    long end_;
    const FieldRecord* owner_;
};

word::RangePtr FakeSelection::Range() {
    const Cursor& c = cursor();
    return std::make_shared<FakeRange>(doc_, c.story, c.start, c.end);
}

word::RangePtr FakeField::Result() {
    const FieldRecord& f = live();
    return std::make_shared<FakeRange>(doc_, f.story, f.start, f.end, &f);
}

class FakeBookmark : public word::Bookmark {
public:
    FakeBookmark(std::shared_ptr<DocState> doc, std::string name)
        : doc_(std::move(doc)), name_(std::move(name)) {}
    std::string Name() const override { return record().name; }
    long Start() const override { return record().start; }
    long End() const override { return record().end; }
    int StoryType() const override { return doc_->form.storyTypes[static_cast<std::size_t>(record().story)]; }
    word::RangePtr Range() override {
        const BookmarkRecord& b = record();
        return std::make_shared<FakeRange>(doc_, b.story, b.start, b.end);
    }
    void Select() override {
        const BookmarkRecord& b = record();
        doc_->selection = {b.story, b.start, b.end};
    }
    void Delete() override {
        record();
        std::erase_if(doc_->form.bookmarks,
                      [this](const auto& b) { return equalsIgnoreCase(b.name, name_); });
    }

private:
    const BookmarkRecord& record() const {
        doc_->check();
        const BookmarkRecord* found = doc_->form.findBookmark(name_);
        if (found == nullptr) {
            throw AutomationError("Das Objekt wurde gelöscht.");
        }
        return *found;
    }
    std::shared_ptr<DocState> doc_;
    std::string name_;
};

class FakeBookmarks : public word::Bookmarks {
public:
    explicit FakeBookmarks(std::shared_ptr<DocState> doc) : doc_(std::move(doc)) {}
    int Count() const override { return static_cast<int>(visible().size()); }
    word::BookmarkPtr Item(int index) override {
        const auto names = visible();
        if (index < 1 || index > static_cast<int>(names.size())) {
            throw AutomationError("Das angeforderte Element ist nicht vorhanden.");
        }
        return std::make_shared<FakeBookmark>(doc_, names[static_cast<std::size_t>(index - 1)]);
    }
    word::BookmarkPtr Item(const std::string& name) override {
        if (!Exists(name)) {
            throw AutomationError("Das angeforderte Element ist nicht vorhanden.");
        }
        return std::make_shared<FakeBookmark>(doc_, name);
    }
    bool Exists(const std::string& name) const override {
        doc_->check();
        return doc_->form.findBookmark(name) != nullptr;
    }
    word::BookmarkPtr Add(const std::string& name, const word::RangePtr& range) override {
        doc_->check();
        if (!validBookmarkName(name)) {
            throw AutomationError("Der Textmarkenname ist ungültig.");
        }
        std::erase_if(doc_->form.bookmarks,
                      [&name](const auto& b) { return equalsIgnoreCase(b.name, name); });
        const auto* fakeRange = dynamic_cast<const FakeRange*>(range.get());
        if (fakeRange == nullptr) {
            unsupported();
        }
        doc_->form.bookmarks.push_back({name, fakeRange->story(), range->Start(), range->End()});
        return std::make_shared<FakeBookmark>(doc_, name);
    }
    int DefaultSorting() const override { return doc_->form.defaultSorting; }
    void DefaultSorting(int sorting) override {
        doc_->check();
        doc_->form.defaultSorting = sorting;
    }
    bool ShowHidden() const override { return doc_->form.showHidden; }
    void ShowHidden(bool show) override {
        doc_->check();
        doc_->form.showHidden = show;
    }

private:
    std::vector<std::string> visible() const {
        doc_->check();
        std::vector<std::string> names;
        for (const auto& b : doc_->form.bookmarks) {
            if (doc_->form.showHidden || !b.name.starts_with('_')) {
                names.push_back(b.name);
            }
        }
        std::sort(names.begin(), names.end(),
                  [](const auto& a, const auto& b) { return toLowerAscii(a) < toLowerAscii(b); });
        return names;
    }
    std::shared_ptr<DocState> doc_;
};

class FakeTextFrame : public word::TextFrame {
public:
    FakeTextFrame(std::shared_ptr<DocState> doc, int story) : doc_(std::move(doc)), story_(story) {}
    bool HasText() const override {
        doc_->check();
        return doc_->form.length(story_) > 0;
    }
    word::RangePtr TextRange() override {
        return std::make_shared<FakeRange>(doc_, story_, 0, doc_->form.length(story_));
    }

private:
    std::shared_ptr<DocState> doc_;
    int story_;
};

class FakeShape : public word::Shape {
public:
    FakeShape(std::shared_ptr<DocState> doc, ShapeRecord record)
        : doc_(std::move(doc)), record_(std::move(record)) {}
    std::string Name() const override { return record_.name; }
    void Name(const std::string&) override { unsupported(); }
    int Type() const override { return word::wd::msoTextBox; }
    float Left() const override { return 0; }
    float Top() const override { return 0; }
    float Width() const override { return 0; }
    float Height() const override { return 0; }
    void Delete() override { unsupported(); }
    word::TextFramePtr TextFrame() override {
        doc_->check();
        return std::make_shared<FakeTextFrame>(doc_, record_.story);
    }
    word::CanvasShapesPtr CanvasItems() override { unsupported(); }
    word::LineFormatPtr Line() override { unsupported(); }

private:
    std::shared_ptr<DocState> doc_;
    ShapeRecord record_;
};

class FakeShapes : public word::Shapes {
public:
    FakeShapes(std::shared_ptr<DocState> doc, const std::vector<ShapeRecord>& records)
        : doc_(std::move(doc)), records_(records) {}
    int Count() const override {
        doc_->check();
        return static_cast<int>(records_.size());
    }
    word::ShapePtr Item(int index) override {
        if (index < 1 || index > Count()) {
            throw AutomationError("Das angeforderte Element ist nicht vorhanden.");
        }
        return std::make_shared<FakeShape>(doc_, records_[static_cast<std::size_t>(index - 1)]);
    }
    word::ShapePtr Item(const std::string&) override { unsupported(); }
    word::ShapePtr AddCanvas(float, float, float, float, const word::RangePtr&) override { unsupported(); }

private:
    std::shared_ptr<DocState> doc_;
    std::vector<ShapeRecord> records_;
};

class FakeHeaderFooter : public word::HeaderFooter {
public:
    FakeHeaderFooter(std::shared_ptr<DocState> doc, int index, int story)
        : doc_(std::move(doc)), index_(index), story_(story) {}
    int Index() const override { return index_; }
    bool Exists() const override { return story_ >= 0; }
    bool LinkToPrevious() const override { return false; } // only the form view asks, on real forms
    word::RangePtr Range() override {
        doc_->check();
        return std::make_shared<FakeRange>(doc_, story_, 0, story_ < 0 ? 0 : doc_->form.length(story_));
    }
    word::ShapesPtr Shapes() override { return std::make_shared<FakeShapes>(doc_, doc_->form.headerShapes); }

private:
    std::shared_ptr<DocState> doc_;
    int index_;
    int story_;
};

class FakeHeadersFooters : public word::HeadersFooters {
public:
    FakeHeadersFooters(std::shared_ptr<DocState> doc, std::array<int, 3> stories)
        : doc_(std::move(doc)), stories_(stories) {}
    int Count() const override {
        doc_->check();
        return 3;
    }
    word::HeaderFooterPtr Item(int index) override {
        if (index < 1 || index > 3) {
            throw AutomationError("Das angeforderte Element ist nicht vorhanden.");
        }
        return std::make_shared<FakeHeaderFooter>(doc_, index, stories_[static_cast<std::size_t>(index - 1)]);
    }

private:
    std::shared_ptr<DocState> doc_;
    std::array<int, 3> stories_;
};

class FakeSection : public word::Section {
public:
    FakeSection(std::shared_ptr<DocState> doc, int index) : doc_(std::move(doc)), index_(index) {}
    int Index() const override { return index_; }
    word::HeadersFootersPtr Headers() override {
        return std::make_shared<FakeHeadersFooters>(doc_, record().headers);
    }
    word::HeadersFootersPtr Footers() override {
        return std::make_shared<FakeHeadersFooters>(doc_, record().footers);
    }
    word::PageSetupPtr PageSetup() override { unsupported(); }

private:
    const SectionRecord& record() const {
        doc_->check();
        return doc_->form.sections[static_cast<std::size_t>(index_ - 1)];
    }
    std::shared_ptr<DocState> doc_;
    int index_;
};

class FakeSections : public word::Sections {
public:
    explicit FakeSections(std::shared_ptr<DocState> doc) : doc_(std::move(doc)) {}
    int Count() const override {
        doc_->check();
        return static_cast<int>(doc_->form.sections.size());
    }
    word::SectionPtr Item(int index) override {
        if (index < 1 || index > Count()) {
            throw AutomationError("Das angeforderte Element ist nicht vorhanden.");
        }
        return std::make_shared<FakeSection>(doc_, index);
    }

private:
    std::shared_ptr<DocState> doc_;
};

class FakeMailMerge : public word::MailMerge {
public:
    explicit FakeMailMerge(std::shared_ptr<DocState> doc) : doc_(std::move(doc)) {}
    int MainDocumentType() const override { return doc_->form.mainDocumentType; }
    void MainDocumentType(int type) override {
        doc_->check();
        doc_->form.mainDocumentType = type;
    }

private:
    std::shared_ptr<DocState> doc_;
};

class FakeDocument : public word::Document {
public:
    FakeDocument(std::shared_ptr<DocState> doc, FakeApplication& app) : doc_(std::move(doc)), app_(app) {}
    std::string Name() const override { return std::filesystem::path(live().path).filename().string(); }
    std::string FullName() const override { return live().path; }
    std::string Path() const override { return std::filesystem::path(live().path).parent_path().string(); }
    bool Saved() const override { return live().saved; }
    word::BookmarksPtr Bookmarks() override { return std::make_shared<FakeBookmarks>(check()); }
    word::FieldsPtr Fields() override {
        return std::make_shared<FakeFields>(check(), 0, 0, doc_->form.length(0));
    }
    word::ShapesPtr Shapes() override { return std::make_shared<FakeShapes>(check(), doc_->form.shapes); }
    word::SectionsPtr Sections() override { return std::make_shared<FakeSections>(check()); }
    word::RangePtr Content() override {
        return std::make_shared<FakeRange>(check(), 0, 0, doc_->form.length(0));
    }
    word::RangePtr Range(std::optional<long> start, std::optional<long> end) override {
        return std::make_shared<FakeRange>(check(), 0, start.value_or(0), end.value_or(doc_->form.length(0)));
    }
    word::MailMergePtr MailMerge() override { return std::make_shared<FakeMailMerge>(check()); }
    void Select() override { check(); }
    // The fake's file is the main text, so a test can see what was saved.
    void Save() override {
        check();
        std::ofstream(doc_->path, std::ios::binary) << doc_->form.stories[0];
        doc_->saved = true;
        ++doc_->saves;
    }
    void SaveAs2(const std::string&) override { unsupported(); }
    void SaveCopyAs(const std::string&) override { unsupported(); }
    void Close(std::optional<int>) override { app_.closeByHand(index()); }
    void ExportAsFixedFormat(const std::string&, int, bool) override { unsupported(); }
    void PrintOut() override { unsupported(); }

private:
    const DocState& live() const {
        doc_->check();
        return *doc_;
    }
    const std::shared_ptr<DocState>& check() const {
        doc_->check();
        return doc_;
    }
    std::size_t index() const {
        check();
        const auto found = std::find(app_.documents.begin(), app_.documents.end(), doc_);
        return static_cast<std::size_t>(found - app_.documents.begin());
    }
    std::shared_ptr<DocState> doc_;
    FakeApplication& app_;
};

class FakeDocuments : public word::Documents {
public:
    explicit FakeDocuments(std::shared_ptr<FakeApplication> app) : app_(std::move(app)) {}
    word::DocumentPtr Open(const std::string& fileName) override {
        return std::make_shared<FakeDocument>(app_->open(fileName), *app_);
    }
    int Count() const override {
        app_->check();
        return static_cast<int>(app_->documents.size());
    }
    word::DocumentPtr Item(int index) override {
        if (index < 1 || index > Count()) {
            throw AutomationError("Das angeforderte Element ist nicht vorhanden.");
        }
        return std::make_shared<FakeDocument>(app_->documents[static_cast<std::size_t>(index - 1)], *app_);
    }

private:
    std::shared_ptr<FakeApplication> app_;
};

} // namespace

FakeForm::FakeForm() {
    addStory(1);
}

FakeForm::FakeForm(const FakeForm& other) {
    *this = other;
}

FakeForm& FakeForm::operator=(const FakeForm& other) {
    if (this == &other) {
        return *this;
    }
    stories = other.stories;
    storyTypes = other.storyTypes;
    fields.clear();
    std::transform(other.fields.begin(), other.fields.end(), std::back_inserter(fields), copyOf);
    bookmarks = other.bookmarks;
    shapes = other.shapes;
    headerShapes = other.headerShapes;
    sections = other.sections;
    mainDocumentType = other.mainDocumentType;
    defaultSorting = other.defaultSorting;
    showHidden = other.showHidden;
    return *this;
}

int FakeForm::addStory(int storyType) {
    stories.emplace_back();
    storyTypes.push_back(storyType);
    return static_cast<int>(stories.size()) - 1;
}

FakeForm& FakeForm::text(std::string_view text, int story) {
    stories[static_cast<std::size_t>(story)] += text;
    return *this;
}

FakeForm& FakeForm::field(std::string_view result, const std::string& code, int story) {
    const long start = length(story);
    text(result, story);
    fields.push_back(std::make_shared<FieldRecord>(FieldRecord{story, start, length(story), code, true}));
    return *this;
}

FakeForm& FakeForm::mergeField(const std::string& name, int story) {
    return field("<" + name + ">", " MERGEFIELD " + name + " ", story);
}

FakeForm& FakeForm::bookmark(const std::string& name, std::string_view text, int story) {
    const long start = length(story);
    this->text(text, story);
    bookmarks.push_back({name, story, start, length(story)});
    return *this;
}

int FakeForm::shape(const std::string& name, bool inHeader) {
    const int story = addStory(5);
    (inHeader ? headerShapes : shapes).push_back({name, story});
    return story;
}

void FakeForm::replace(int story, long start, long end, std::string_view text) {
    const long inserted = static_cast<long>(text.size());
    const long delta = inserted - (end - start);
    stories[static_cast<std::size_t>(story)].replace(static_cast<std::size_t>(start),
                                                     static_cast<std::size_t>(end - start), text);
    const auto moved = [&](long position) {
        if (position >= end) {
            return position + delta;
        }
        return position <= start ? position : start + inserted;
    };
    for (auto& f : fields) {
        if (!f->alive || f->story != story) {
            continue;
        }
        if (start == end) {
            if (f->start >= start) {
                f->start += delta;
                f->end += delta;
            } else if (f->end > start) {
                f->end += delta;
            }
        } else if (start < f->end && end > f->start) {
            f->alive = false; // a field cut into or typed over is gone as a whole
        } else {
            f->start = moved(f->start);
            f->end = moved(f->end);
        }
    }
    for (auto& b : bookmarks) {
        if (b.story != story) {
            continue;
        }
        if (start == end) {
            if (b.start > start) {
                b.start += delta;
                b.end += delta;
            } else if (b.start == start || b.end > start) {
                b.end += delta;
            }
        } else if (start <= b.start && b.end <= end) {
            b.start = start;
            b.end = start + inserted;
        } else {
            b.start = moved(b.start);
            b.end = moved(b.end);
        }
    }
}

const BookmarkRecord* FakeForm::findBookmark(const std::string& name) const {
    const auto found = std::find_if(bookmarks.begin(), bookmarks.end(),
                                    [&name](const auto& b) { return equalsIgnoreCase(b.name, name); });
    return found == bookmarks.end() ? nullptr : &*found;
}

std::string FakeForm::bookmarkText(const std::string& name) const {
    const BookmarkRecord* b = findBookmark(name);
    if (b == nullptr) {
        return {};
    }
    return stories[static_cast<std::size_t>(b->story)].substr(static_cast<std::size_t>(b->start),
                                                              static_cast<std::size_t>(b->end - b->start));
}

void DocState::check() const {
    if (!*appAlive) {
        throw AutomationError("Der Remoteprozeduraufruf ist fehlgeschlagen.");
    }
    if (!open) {
        throw AutomationError("Das Objekt wurde gelöscht.");
    }
}

void FakeApplication::check() const {
    if (!*alive) {
        throw AutomationError("Der Remoteprozeduraufruf ist fehlgeschlagen.");
    }
}

word::DocumentsPtr FakeApplication::Documents() {
    check();
    return std::make_shared<FakeDocuments>(shared_from_this());
}

std::shared_ptr<DocState> FakeApplication::active() const {
    check();
    if (documents.empty()) {
        throw AutomationError("Es ist kein Dokument geöffnet.");
    }
    return documents.back();
}

word::DocumentPtr FakeApplication::ActiveDocument() {
    return std::make_shared<FakeDocument>(active(), *this);
}

word::SelectionPtr FakeApplication::Selection() {
    return std::make_shared<FakeSelection>(active());
}

void FakeApplication::Visible(bool value) {
    check();
    visible = value;
}

void FakeApplication::ScreenUpdating(bool value) {
    check();
    screenUpdating = value;
}

void FakeApplication::Quit(std::optional<int> saveChanges) {
    check();
    quits.push_back(saveChanges);
    documents.clear();
    *alive = false;
}

void FakeApplication::closeByHand(std::size_t document) {
    documents.at(document)->open = false;
    documents.erase(documents.begin() + static_cast<std::ptrdiff_t>(document));
}

std::shared_ptr<DocState> FakeApplication::open(const std::string& path) {
    check();
    if (!std::filesystem::exists(path)) {
        throw AutomationError("Die Datei wurde nicht gefunden.");
    }
    const auto form = forms_.find(std::filesystem::path(path).filename().string());
    if (form == forms_.end()) {
        throw AutomationError("Das Dokument ist beschädigt.");
    }
    auto doc = std::make_shared<DocState>();
    doc->form = form->second;
    doc->path = path;
    doc->appAlive = alive;
    documents.push_back(doc);
    opened.push_back(doc);
    return doc;
}

std::function<word::ApplicationPtr()> FakeWord::factory() {
    return [this]() -> word::ApplicationPtr {
        if (refuse) {
            throw AutomationError("Word.Application kann nicht erstellt werden.");
        }
        apps.push_back(std::make_shared<FakeApplication>(forms));
        return apps.back();
    };
}

} // namespace wordbm::fake
