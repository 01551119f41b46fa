#pragma once

#include "engine/word/Application.h"

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A small in-memory word processor behind the word:: interfaces, enough to drive the engine's
// commands: stories of plain ASCII text, fields and bookmarks as offsets into them, text-box
// shapes, sections with headers and footers. Edits follow Word where the engine depends on it:
// a field typed over wholly disappears, text typed at a bookmark's start goes inside it, at its
// end outside, and typing over a whole bookmark keeps it around the new text.
namespace wordbm::fake {

struct FieldRecord {
    int story = 0;
    long start = 0;
    long end = 0;
    std::string code;
    bool alive = true;
};

struct BookmarkRecord {
    std::string name;
    int story = 0;
    long start = 0;
    long end = 0;
};

struct ShapeRecord {
    std::string name;
    int story = 0; // the story of its text box
};

struct SectionRecord {
    std::array<int, 3> headers{-1, -1, -1}; // story per header type, -1 where none is defined
    std::array<int, 3> footers{-1, -1, -1};
};

// A form: what a file name opens to. Story 0 is the main text.
class FakeForm {
public:
    FakeForm();
    FakeForm(const FakeForm& other);
    FakeForm& operator=(const FakeForm& other);

    int addStory(int storyType);
    FakeForm& text(std::string_view text, int story = 0);
    FakeForm& field(std::string_view result, const std::string& code, int story = 0);
    // "<name>" over the code " MERGEFIELD name ".
    FakeForm& mergeField(const std::string& name, int story = 0);
    FakeForm& bookmark(const std::string& name, std::string_view text, int story = 0);
    // A text box with its own story, anchored in the main text or in a header; returns the story.
    int shape(const std::string& name, bool inHeader = false);

    // The one edit: replaces [start, end) of the story.
    void replace(int story, long start, long end, std::string_view text);
    long length(int story) const {
        return static_cast<long>(stories[static_cast<std::size_t>(story)].size());
    }
    const BookmarkRecord* findBookmark(const std::string& name) const;
    // The text a bookmark covers; "" when it is absent.
    std::string bookmarkText(const std::string& name) const;

    std::vector<std::string> stories;
    std::vector<int> storyTypes;
    std::vector<std::shared_ptr<FieldRecord>> fields;
    std::vector<BookmarkRecord> bookmarks;
    std::vector<ShapeRecord> shapes;
    std::vector<ShapeRecord> headerShapes;
    std::vector<SectionRecord> sections{1};
    int mainDocumentType = 0;
    int defaultSorting = 1;
    bool showHidden = true;
};

struct Cursor {
    int story = 0;
    long start = 0;
    long end = 0;
};

class FakeApplication;

// One open document of an application.
struct DocState {
    FakeForm form;
    std::string path;
    Cursor selection;
    bool open = true;
    bool saved = true;
    int saves = 0;
    std::shared_ptr<bool> appAlive;
    // Throws as automation does once the document or its application is gone.
    void check() const;
};

class FakeApplication : public word::Application, public std::enable_shared_from_this<FakeApplication> {
public:
    explicit FakeApplication(std::map<std::string, FakeForm>& forms) : forms_(forms) {}

    word::DocumentsPtr Documents() override;
    word::DocumentPtr ActiveDocument() override;
    word::SelectionPtr Selection() override;
    bool Visible() const override { return visible; }
    void Visible(bool value) override;
    bool ScreenUpdating() const override { return screenUpdating; }
    void ScreenUpdating(bool value) override;
    void Quit(std::optional<int> saveChanges = std::nullopt) override;

    // The person at the machine: closes a document, or the whole program, by hand.
    void closeByHand(std::size_t document);
    void crash() { *alive = false; }

    std::shared_ptr<DocState> open(const std::string& path);
    void check() const;
    std::shared_ptr<DocState> active() const;

    std::vector<std::shared_ptr<DocState>> documents; // open ones, in opening order
    std::vector<std::shared_ptr<DocState>> opened;    // every one ever opened
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);
    bool visible = false;
    bool screenUpdating = true;
    std::vector<std::optional<int>> quits;

private:
    std::map<std::string, FakeForm>& forms_;
};

// The factory side: forms registered by file name, every application created.
class FakeWord {
public:
    std::function<word::ApplicationPtr()> factory();

    std::map<std::string, FakeForm> forms;
    std::vector<std::shared_ptr<FakeApplication>> apps;
    bool refuse = false; // creating the application fails
};

} // namespace wordbm::fake
