#pragma once

#include "engine/ooxml/BookmarkIndex.h"
#include "engine/ooxml/SectionLayout.h"
#include "engine/ooxml/SelectionState.h"
#include "engine/ooxml/Span.h"
#include "engine/ooxml/StoryRegistry.h"
#include "engine/ooxml/TemporaryFolder.h"
#include "engine/word/Document.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace wordbm::ooxml {

class Package;

// A .docx or .docm opened by the embedded word processor. The objects it hands out (ranges,
// bookmarks, fields, shapes) refer back to it and throw AutomationError once it is closed.
class DocxDocument final : public word::Document, public std::enable_shared_from_this<DocxDocument> {
public:
    // Throws AutomationError with a German description for a missing, damaged or refused file.
    static std::shared_ptr<DocxDocument> open(const std::string& path);
    // A document over a package already read from `path` (a copy of a kept parse).
    static std::shared_ptr<DocxDocument> open(const std::string& path, std::unique_ptr<Package> package);
    ~DocxDocument() override;

    std::string Name() const override;
    std::string FullName() const override;
    std::string Path() const override;
    bool Saved() const override;

    word::BookmarksPtr Bookmarks() override;
    word::FieldsPtr Fields() override;
    word::ShapesPtr Shapes() override;
    word::SectionsPtr Sections() override;
    word::RangePtr Content() override;
    word::RangePtr Range(std::optional<long> start = std::nullopt,
                         std::optional<long> end = std::nullopt) override;
    word::MailMergePtr MailMerge() override;

    void Select() override;
    void Save() override;
    void SaveAs2(const std::string& fileName) override;
    void SaveCopyAs(const std::string& fileName) override;
    void Close(std::optional<int> saveChanges = std::nullopt) override;
    void ExportAsFixedFormat(const std::string& outputFileName, int exportFormat,
                             bool useISO19005_1 = false) override;
    void PrintOut() override;

    // --- for the objects that refer into the document ---
    // Throws once the document is closed.
    void check() const;
    bool closed() const { return closed_; }
    Package& package();
    StoryRegistry& stories();
    // Follows the edits since the last call, or is read anew when they cannot be followed.
    const BookmarkIndex& bookmarkIndex();
    // The entry with its offsets as they are now.
    BookmarkEntry located(const BookmarkEntry& entry);
    // The document's bookmarks as its collection shows them: alphabetical, hidden ones only with
    // ShowHidden. Kept until the next edit, so walking a long collection by index stays linear.
    const std::vector<const BookmarkEntry*>& listedBookmarks();
    const std::vector<SectionParts>& sections();
    SelectionState& selection();

    // Every edit goes through these, so the document knows what to save and when tables are stale.
    std::pair<long, long> replace(Story& story, const Span& span, std::string_view text,
                                  pugi::xml_node run = {});
    void addBookmark(const std::string& name, Story& story, const Span& span);
    void deleteBookmark(const BookmarkEntry& bookmark);
    void setFieldCode(Story& story, pugi::xml_node field, std::string_view code);
    void format(Story& story, const Span& span, const std::function<void(pugi::xml_node)>& change);
    void ensureParagraph(Story& story);
    // After drawings in `holder` were added, removed or changed by the drawing classes.
    void drawingsChanged(Story& holder);
    // Before a subtree with drawings is removed: the text boxes in it stop being stories.
    void retireInside(pugi::xml_node subtree);
    // The mail-merge settings changed: the document needs saving.
    void settingsChanged();
    // A section's page setup in the main story changed: the part needs saving.
    void pageSetupChanged();
    // A new drawing id, above every id of every part.
    unsigned nextDrawingId();

    bool showHiddenBookmarks() const { return showHidden_; }
    void showHiddenBookmarks(bool show) { showHidden_ = show; }
    int bookmarkSorting() const { return sorting_; }
    void bookmarkSorting(int sorting) { sorting_ = sorting; }

    // Saves the current state, as the PDF worker can load it, into a private temporary folder and
    // returns the file's path.
    std::string temporaryCopy(const std::string& folder);
    // What the PDF worker loads: the file this document was last saved to when nothing changed
    // since and the worker reads it as it is, otherwise a temporary copy in `folder`.
    std::string fileForWorker(std::optional<TemporaryFolder>& folder);

private:
    DocxDocument(std::unique_ptr<Package> package, std::string path);
    void changed(Story& story);
    void writeTo(const std::string& path);
    void refreshFallbacks();
    std::shared_ptr<DocxDocument> self();

    std::unique_ptr<Package> package_;
    std::string path_;
    std::unique_ptr<StoryRegistry> stories_;
    SelectionState selection_;
    std::uint64_t generation_ = 0;
    void readBookmarks(const std::vector<Story*>& stories);

    std::unique_ptr<BookmarkIndex> bookmarks_;
    std::vector<Story*> indexedStories_;
    std::vector<const BookmarkEntry*> listed_;
    std::uint64_t listedGeneration_ = ~std::uint64_t{0};
    bool listedWithHidden_ = false;
    std::vector<SectionParts> sections_;
    std::uint64_t sectionsGeneration_ = ~std::uint64_t{0};
    bool saved_ = true;
    // The file writeTo last wrote, and the generation it holds.
    std::string writtenPath_;
    std::uint64_t writtenGeneration_ = 0;
    bool closed_ = false;
    bool showHidden_ = false;
    int sorting_ = 0;
};

} // namespace wordbm::ooxml
