#include "engine/ooxml/DocxBookmarks.h"

#include "engine/ooxml/DocxBookmark.h"
#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxRange.h"
#include "engine/ooxml/NameKey.h"
#include "engine/ooxml/Story.h"
#include "engine/ooxml/Utf16.h"
#include "engine/word/AutomationError.h"

#include <algorithm>
#include <unordered_map>

namespace wordbm::ooxml {

namespace {

bool isAsciiLetter(unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace

DocxBookmarks::DocxBookmarks(std::shared_ptr<DocxDocument> document) : document_(std::move(document)) {}

DocxBookmarks::DocxBookmarks(std::shared_ptr<DocxDocument> document, Story* story, long start, long end)
    : document_(std::move(document)), scope_(Scope{story, start, end}) {}

bool DocxBookmarks::validName(const std::string& name) {
    if (name.empty() || utf16::length(name) > 40) {
        return false;
    }
    const auto first = static_cast<unsigned char>(name.front());
    // Letters of other scripts (bytes from 0x80 on) are letters to Word as well.
    if (!isAsciiLetter(first) && first != '_' && first < 0x80) {
        return false;
    }
    return std::all_of(name.begin(), name.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return isAsciiLetter(byte) || (byte >= '0' && byte <= '9') || byte == '_' || byte >= 0x80;
    });
}

// The bookmarks of the scope's story that lie within it: their markers stand in the window of the
// scope, so the rest of the story is not looked at.
std::vector<BookmarkEntry> DocxBookmarks::visible() const {
    document_->check();
    std::vector<BookmarkEntry> entries;
    if (!scope_->story) {
        return entries;
    }
    const bool hiddenToo = document_->showHiddenBookmarks();
    const auto& index = document_->bookmarkIndex();
    const auto& map = scope_->story->window(scope_->start, scope_->end).map;
    std::unordered_map<pugi::xml_node_struct*, long> ends;
    for (const auto& item : map.items) {
        if (item.kind == ItemKind::BookmarkEnd) {
            ends.emplace(item.node.internal_object(), item.offset);
        }
    }
    for (const auto& item : map.items) {
        const auto* entry = item.kind == ItemKind::BookmarkStart ? index.startingAt(item.node) : nullptr;
        if (!entry || entry->story != scope_->story || (entry->hidden() && !hiddenToo)) {
            continue;
        }
        const auto end = ends.find(entry->endMarker.internal_object());
        if (end == ends.end()) {
            continue; // it ends behind the scope's window, so behind the scope
        }
        auto found = *entry;
        found.start = item.offset;
        found.end = std::max(end->second, found.start);
        if (found.start >= scope_->start && found.end <= scope_->end) {
            entries.push_back(std::move(found));
        }
    }
    // Bookmarks with the same offsets stay in alphabetical order, as the document lists them.
    std::sort(entries.begin(), entries.end(), [](const BookmarkEntry& a, const BookmarkEntry& b) {
        return a.start != b.start ? a.start < b.start : a.end != b.end ? a.end > b.end : a.key < b.key;
    });
    return entries;
}

int DocxBookmarks::Count() const {
    document_->check();
    return static_cast<int>(scope_ ? visible().size() : document_->listedBookmarks().size());
}

word::BookmarkPtr DocxBookmarks::Item(int index) {
    document_->check();
    if (!scope_) {
        const auto& listed = document_->listedBookmarks();
        if (index < 1 || index > static_cast<int>(listed.size())) {
            throw AutomationError("Das angeforderte Element der Textmarken-Auflistung ist nicht vorhanden.");
        }
        return std::make_shared<DocxBookmark>(document_, listed[index - 1]->name);
    }
    const auto entries = visible();
    if (index < 1 || index > static_cast<int>(entries.size())) {
        throw AutomationError("Das angeforderte Element der Textmarken-Auflistung ist nicht vorhanden.");
    }
    return std::make_shared<DocxBookmark>(document_, entries[index - 1].name);
}

word::BookmarkPtr DocxBookmarks::Item(const std::string& name) {
    if (!Exists(name)) {
        throw AutomationError("Die Textmarke «" + name + "» ist nicht vorhanden.");
    }
    return std::make_shared<DocxBookmark>(document_, document_->bookmarkIndex().find(name)->name);
}

bool DocxBookmarks::Exists(const std::string& name) const {
    document_->check();
    if (!scope_) {
        const auto* found = document_->bookmarkIndex().find(name);
        return found && (!found->hidden() || document_->showHiddenBookmarks());
    }
    const auto entries = visible();
    const auto key = nameKey(name);
    return std::any_of(entries.begin(), entries.end(),
                       [&](const BookmarkEntry& entry) { return entry.key == key; });
}

word::BookmarkPtr DocxBookmarks::Add(const std::string& name, const word::RangePtr& range) {
    document_->check();
    const auto* target = dynamic_cast<const DocxRange*>(range.get());
    if (!target || &target->document() != document_.get() || !target->story()) {
        throw AutomationError("Der Bereich für die Textmarke gehört nicht zu diesem Dokument.");
    }
    if (!validName(name)) {
        throw AutomationError("Ungültiger Textmarkenname: «" + name + "».");
    }
    document_->addBookmark(name, *target->story(), target->current());
    return std::make_shared<DocxBookmark>(document_, name);
}

int DocxBookmarks::DefaultSorting() const {
    document_->check();
    return document_->bookmarkSorting();
}

void DocxBookmarks::DefaultSorting(int sorting) {
    document_->check();
    document_->bookmarkSorting(sorting);
}

bool DocxBookmarks::ShowHidden() const {
    document_->check();
    return document_->showHiddenBookmarks();
}

void DocxBookmarks::ShowHidden(bool show) {
    document_->check();
    document_->showHiddenBookmarks(show);
}

} // namespace wordbm::ooxml
