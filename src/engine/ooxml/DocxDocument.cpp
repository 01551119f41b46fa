#include "engine/ooxml/DocxDocument.h"

#include "engine/office/CupsPrinter.h"
#include "engine/office/OfficeConverter.h"
#include "engine/ooxml/CommentAnchors.h"
#include "engine/ooxml/DocxBookmarks.h"
#include "engine/ooxml/DocxFields.h"
#include "engine/ooxml/DocxMailMerge.h"
#include "engine/ooxml/DocxRange.h"
#include "engine/ooxml/DocxSections.h"
#include "engine/ooxml/DocxShapes.h"
#include "engine/ooxml/Package.h"
#include "engine/ooxml/ShapeFinder.h"
#include "engine/ooxml/StoryEditor.h"
#include "engine/ooxml/TemporaryFolder.h"
#include "engine/ooxml/VmlFallback.h"
#include "engine/ooxml/XmlTree.h"
#include "engine/word/AutomationError.h"
#include "engine/word/WordConstants.h"
#include "support/FileOps.h"

#include <algorithm>
#include <filesystem>

namespace wordbm::ooxml {

namespace fs = std::filesystem;

std::shared_ptr<DocxDocument> DocxDocument::open(const std::string& path) {
    if (!fileExists(path)) {
        throw AutomationError("Die Datei wurde nicht gefunden: " + path);
    }
    return open(path, Package::open(path));
}

std::shared_ptr<DocxDocument> DocxDocument::open(const std::string& path, std::unique_ptr<Package> package) {
    if (package->mainDocumentPart().empty()) {
        throw AutomationError("Die Datei ist kein Word-Dokument: " + path);
    }
    std::error_code error;
    auto absolute = fs::absolute(path, error);
    return std::shared_ptr<DocxDocument>(
        new DocxDocument(std::move(package), error ? path : absolute.lexically_normal().string()));
}

DocxDocument::DocxDocument(std::unique_ptr<Package> package, std::string path)
    : package_(std::move(package)), path_(std::move(path)),
      stories_(std::make_unique<StoryRegistry>(*package_)) {
    selection_.story = &stories_->main();
}

DocxDocument::~DocxDocument() = default;

void DocxDocument::check() const {
    if (closed_) {
        throw AutomationError("Das Dokument ist nicht mehr geöffnet.");
    }
}

std::shared_ptr<DocxDocument> DocxDocument::self() {
    check();
    return shared_from_this();
}

std::string DocxDocument::Name() const {
    check();
    return fs::path(path_).filename().string();
}

std::string DocxDocument::FullName() const {
    check();
    return path_;
}

std::string DocxDocument::Path() const {
    check();
    return fs::path(path_).parent_path().string();
}

bool DocxDocument::Saved() const {
    check();
    return saved_;
}

word::BookmarksPtr DocxDocument::Bookmarks() {
    return std::make_shared<DocxBookmarks>(self());
}

word::FieldsPtr DocxDocument::Fields() {
    return std::make_shared<DocxFields>(self(), &stories_->main(), 0, 0, true);
}

word::ShapesPtr DocxDocument::Shapes() {
    return std::make_shared<DocxShapes>(self(), DocxShapes::Scope::Main);
}

word::SectionsPtr DocxDocument::Sections() {
    return std::make_shared<DocxSections>(self());
}

word::RangePtr DocxDocument::Content() {
    auto& main = stories_->main();
    return std::make_shared<DocxRange>(self(), &main, Span{0, main.length()});
}

word::RangePtr DocxDocument::Range(std::optional<long> start, std::optional<long> end) {
    auto& main = stories_->main();
    const long length = main.length();
    const long from = std::clamp(start.value_or(0), 0L, length);
    return std::make_shared<DocxRange>(self(), &main,
                                       Span{from, std::clamp(end.value_or(length), from, length)});
}

word::MailMergePtr DocxDocument::MailMerge() {
    return std::make_shared<DocxMailMerge>(self());
}

void DocxDocument::Select() {
    check();
    selection_ = {};
    selection_.story = &stories_->main();
    selection_.active = selection_.story->length();
}

void DocxDocument::Save() {
    check();
    writeTo(path_);
}

void DocxDocument::SaveAs2(const std::string& fileName) {
    check();
    std::error_code error;
    const auto absolute = fs::absolute(fileName, error);
    const auto target = error ? fileName : absolute.lexically_normal().string();
    writeTo(target);
    path_ = target;
}

void DocxDocument::SaveCopyAs(const std::string& fileName) {
    check();
    refreshFallbacks();
    package_->save(fileName);
}

// Text boxes stored twice: the copy that other programs read follows the edited one.
void DocxDocument::refreshFallbacks() {
    for (auto* story : stories_->all()) {
        if (story->kind() == StoryKind::TextBox && story->editedSinceSave()) {
            VmlFallback::regenerateAround(story->root());
            package_->markModified(story->partName());
        }
    }
}

void DocxDocument::writeTo(const std::string& path) {
    refreshFallbacks();
    package_->save(path);
    for (auto* story : stories_->all()) {
        story->saved();
    }
    saved_ = true;
    writtenPath_ = path;
    writtenGeneration_ = generation_;
}

void DocxDocument::Close(std::optional<int> saveChanges) {
    check();
    if (saveChanges == word::wd::wdSaveChanges) {
        Save();
    }
    closed_ = true;
    // The objects still referring here check closed_ before they touch a story.
    stories_.reset();
    package_.reset();
}

void DocxDocument::ExportAsFixedFormat(const std::string& outputFileName, int exportFormat,
                                       bool useISO19005_1) {
    check();
    if (exportFormat != word::wd::wdExportFormatPDF) {
        throw AutomationError("Nur der Export als PDF (17) wird unterstützt.");
    }
    std::optional<TemporaryFolder> folder;
    office::OfficeConverter::shared().toPdf(fileForWorker(folder), outputFileName, useISO19005_1);
}

void DocxDocument::PrintOut() {
    check();
    TemporaryFolder printFolder;
    const auto pdf = (fs::path(printFolder.path()) / "druck.pdf").string();
    std::optional<TemporaryFolder> folder;
    office::OfficeConverter::shared().toPdf(fileForWorker(folder), pdf, false);
    office::CupsPrinter::print(pdf, {}, Name());
}

std::string DocxDocument::fileForWorker(std::optional<TemporaryFolder>& folder) {
    check();
    // LibreOffice picks its import filter by the extension as well as the content.
    const auto extension = fs::path(path_).extension().string();
    const bool kindShown = extension == (package_->isMacroEnabled() ? ".docm" : ".docx");
    const bool asWritten = saved_ && writtenPath_ == path_ && writtenGeneration_ == generation_;
    if (asWritten && kindShown && !CommentAnchors::present(*package_) && fs::is_regular_file(path_)) {
        return path_;
    }
    folder.emplace();
    return temporaryCopy(folder->path());
}

std::string DocxDocument::temporaryCopy(const std::string& folder) {
    check();
    const auto extension = package_->isMacroEnabled() ? ".docm" : ".docx";
    const auto copy = (fs::path(folder) / (fs::path(path_).stem().string() + extension)).string();
    if (!CommentAnchors::present(*package_)) {
        SaveCopyAs(copy);
        return copy;
    }
    refreshFallbacks();
    CommentAnchors::withoutAnchors(*package_)->save(copy);
    return copy;
}

Package& DocxDocument::package() {
    check();
    return *package_;
}

StoryRegistry& DocxDocument::stories() {
    check();
    return *stories_;
}

const BookmarkIndex& DocxDocument::bookmarkIndex() {
    check();
    const auto stories = stories_->all();
    if (!bookmarks_ || stories != indexedStories_) {
        readBookmarks(stories);
        return *bookmarks_;
    }
    std::vector<std::vector<MarkerChange>> edits;
    for (auto* story : stories) {
        const bool followed = story->takeMarkerChanges(edits);
        for (std::size_t i = 0; followed && i < edits.size(); ++i) {
            if (!bookmarks_->follow(*story, edits[i])) {
                readBookmarks(stories);
                return *bookmarks_;
            }
        }
        if (!followed) {
            readBookmarks(stories);
            return *bookmarks_;
        }
    }
    return *bookmarks_;
}

void DocxDocument::readBookmarks(const std::vector<Story*>& stories) {
    std::vector<std::vector<MarkerChange>> past;
    for (auto* story : stories) {
        story->takeMarkerChanges(past);
    }
    bookmarks_ = std::make_unique<BookmarkIndex>(stories);
    indexedStories_ = stories;
}

BookmarkEntry DocxDocument::located(const BookmarkEntry& entry) {
    auto copy = entry;
    copy.start = entry.story->offsetOf(entry.startMarker);
    copy.end = std::max(entry.story->offsetOf(entry.endMarker), copy.start);
    return copy;
}

const std::vector<const BookmarkEntry*>& DocxDocument::listedBookmarks() {
    const auto& index = bookmarkIndex();
    if (listedGeneration_ != generation_ || listedWithHidden_ != showHidden_) {
        listed_.clear();
        for (const auto* entry : index.sorted()) {
            if (showHidden_ || !entry->hidden()) {
                listed_.push_back(entry);
            }
        }
        listedGeneration_ = generation_;
        listedWithHidden_ = showHidden_;
    }
    return listed_;
}

const std::vector<SectionParts>& DocxDocument::sections() {
    check();
    if (sectionsGeneration_ != generation_) {
        sections_ = SectionLayout::read(*package_, *stories_);
        sectionsGeneration_ = generation_;
    }
    return sections_;
}

SelectionState& DocxDocument::selection() {
    check();
    return selection_;
}

void DocxDocument::changed(Story& story) {
    package_->markModified(story.partName());
    ++generation_;
    saved_ = false;
}

void DocxDocument::pageSetupChanged() {
    check();
    changed(stories_->main());
}

void DocxDocument::settingsChanged() {
    ++generation_;
    saved_ = false;
}

std::pair<long, long> DocxDocument::replace(Story& story, const Span& span, std::string_view text,
                                            pugi::xml_node run) {
    check();
    StoryEditor editor(story, [this](pugi::xml_node removed) {
        if (std::string_view(removed.name()) == "w:txbxContent" ||
            xmltree::firstDescendant(removed, "w:txbxContent")) {
            stories_->retireInside(removed);
            stories_->drawingsChanged();
        }
    });
    const auto result = editor.replace(span, text, run);
    changed(story);
    return result;
}

void DocxDocument::addBookmark(const std::string& name, Story& story, const Span& span) {
    check();
    if (const auto* existing = bookmarkIndex().find(name)) {
        // As in Word, adding a name that exists moves the bookmark.
        const auto copy = *existing;
        deleteBookmark(copy);
    }
    StoryEditor(story).addBookmark(span, name, bookmarkIndex().nextId());
    changed(story);
}

void DocxDocument::deleteBookmark(const BookmarkEntry& bookmark) {
    check();
    auto& story = *bookmark.story;
    if (bookmarkIndex().markers(story, bookmark.id) == 2) {
        StoryEditor(story).removeBookmark(bookmark.id, bookmark.startMarker, bookmark.endMarker);
    } else {
        StoryEditor(story).removeBookmark(bookmark.id);
    }
    changed(story);
}

void DocxDocument::setFieldCode(Story& story, pugi::xml_node field, std::string_view code) {
    check();
    StoryEditor(story).setFieldCode(field, code);
    changed(story);
}

void DocxDocument::format(Story& story, const Span& span, const std::function<void(pugi::xml_node)>& change) {
    check();
    StoryEditor(story).format(span, change);
    changed(story);
}

void DocxDocument::ensureParagraph(Story& story) {
    check();
    if (StoryEditor(story).ensureParagraph()) {
        changed(story);
    }
}

void DocxDocument::drawingsChanged(Story& holder) {
    check();
    holder.changed();
    changed(holder);
    stories_->drawingsChanged();
}

void DocxDocument::retireInside(pugi::xml_node subtree) {
    check();
    stories_->retireInside(subtree);
}

unsigned DocxDocument::nextDrawingId() {
    check();
    unsigned highest = 0;
    for (auto* story : stories_->all()) {
        if (story->kind() != StoryKind::TextBox) {
            highest = std::max(highest, ShapeFinder::maxDrawingId(story->root().root()));
        }
    }
    return highest + 1;
}

} // namespace wordbm::ooxml
