// Bookmark insertion, merge-field conversion and reset, bookmark verification.
#include "data/MergeFieldName.h"
#include "engine/WordBM.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Fields.h"
#include "engine/word/Range.h"
#include "engine/word/Sections.h"
#include "engine/word/Selection.h"
#include "engine/word/TextLength.h"

#include <exception>

namespace wordbm {

namespace {

constexpr const char* CrLf = "\r\n";
constexpr std::string_view SlipPrefix = "ESQR";

bool isContinuationByte(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// Characters as a backspace removes them, not UTF-8 bytes.
int characterCount(std::string_view text) {
    int count = 0;
    for (char c : text) {
        if (!isContinuationByte(c)) {
            ++count;
        }
    }
    return count;
}

// The second character of the text, "" when it has fewer than two.
std::string_view secondCharacter(std::string_view text) {
    std::size_t start = 1;
    while (start < text.size() && isContinuationByte(text[start])) {
        ++start;
    }
    if (start >= text.size()) {
        return {};
    }
    std::size_t end = start + 1;
    while (end < text.size() && isContinuationByte(text[end])) {
        ++end;
    }
    return text.substr(start, end - start);
}

void typeBackspaces(word::Selection& selection, int count) {
    for (int i = 0; i < count; ++i) {
        selection.TypeBackspace();
    }
}

} // namespace

std::string WordBM::BookmarkCreate(const std::string& field) {
    if (!word_) {
        return {};
    }
    const std::string display = "[" + field + "]";
    std::string name;
    word::SelectionPtr selection;
    try {
        const word::BookmarksPtr bookmarks = word_->ActiveDocument()->Bookmarks();
        name = KnownFields::UnusedBookmarkName(
            field, [&](const std::string& made) { return bookmarks->Exists(made); });
        selection = word_->Selection();
        selection->TypeText(display);
    } catch (const std::exception&) {
        return {};
    }
    try {
        selection->MoveLeft(word::wd::wdCharacter, static_cast<int>(word::TextLength(display)),
                            word::wd::wdExtend);
        const word::BookmarksPtr bookmarks = word_->ActiveDocument()->Bookmarks();
        bookmarks->Add(name, selection->Range());
        bookmarks->DefaultSorting(0);
        bookmarks->ShowHidden(false);
        selection->MoveRight();
    } catch (const std::exception&) {
        // The text is typed, but without its bookmark it is no placed field.
        return {};
    }
    return name;
}

void WordBM::mfWBM_Insert(const std::string& field) {
    if (!CheckDoc(true)) {
        return;
    }
    const std::string bookmark = BookmarkCreate(field);
    MyMsgBox("Feld=" + field + CrLf + "Textmarke=" + bookmark, msgbox::Information, "Textmarke eingefügt");
}

void WordBM::mfWBM_Replace() {
    if (!CheckDoc(true)) {
        return;
    }
    word::RangePtr remembered;
    try {
        remembered = word_->Selection()->Range();
    } catch (const std::exception&) {
        // Without a place to go back to, the cursor stays where the replacing leaves it.
    }
    const int answer =
        MyMsgBox("Alle bekannten Seriendruckfelder durch Textmarken ersetzen?", msgbox::YesNoCancel, Title);
    if (answer == msgbox::Cancel) {
        return;
    }
    const bool automatic = answer == msgbox::Yes;
    if (automatic) {
        try {
            word_->ScreenUpdating(false);
        } catch (const std::exception&) {
            // Screen updating only costs time; the fields are replaced all the same.
        }
        ui_.progressStart(Title, 0);
    }
    replaced_ = 0;
    DocumentWalk();
    const std::vector<word::FieldPtr> occurrences = gathered_;
    const int total = static_cast<int>(occurrences.size());
    for (int i = 0; i < total; ++i) {
        const word::FieldPtr& field = occurrences[static_cast<std::size_t>(i)];
        std::string name;
        try {
            name = MergeFieldName(field->Code()->Text()).value_or("");
        } catch (const std::exception&) {
            // Already replaced through an earlier visit of the same header: a duplicate.
            continue;
        }
        if (name.empty() || fields_.FieldKnown(name).empty()) {
            continue;
        }
        if (!automatic) {
            const int ask = MyMsgBox("Seriendrukfeld \"" + name + "\" durch Textmarke ersetzen?",
                                     msgbox::YesNoCancel, Title);
            if (ask == msgbox::Cancel) {
                break;
            }
            if (ask != msgbox::Yes) {
                continue;
            }
        }
        try {
            field->Select();
            if (!BookmarkCreate(name).empty()) {
                ++replaced_;
            }
        } catch (const std::exception&) {
            // A field that cannot be replaced stays and is counted with the duplicates in the summary.
        }
        if (automatic) {
            ui_.progressStep(i + 1, total);
        }
        ui_.processEvents();
    }
    std::string summary = std::to_string(replaced_) + " Seriendruckfelder ";
    if (automatic) {
        try {
            word_->Selection()->HomeKey(word::wd::wdStory);
        } catch (const std::exception&) {
            // Where the cursor ends up is a courtesy; the fields are replaced already.
        }
        try {
            word_->ScreenUpdating(true);
        } catch (const std::exception&) {
            // A word processor that refuses this has failed already; the summary below still gives the count.
        }
        ui_.progressStop();
        if (replaced_ < total) {
            summary += "(+" + std::to_string(total - replaced_) + " Duplikate) ";
        }
    }
    MyMsgBox(summary + "wurden duch Textfelder ersetzt!", msgbox::Information, Title);
    try {
        if (remembered) {
            remembered->Select();
        }
    } catch (const std::exception&) {
        // The remembered place may have gone with a replaced field; the cursor then stays at the start.
    }
}

void WordBM::mfWBM_Reset() {
    if (!CheckDoc(true)) {
        return;
    }
    if (MyMsgBox("Alle Seriendruckfelder löschen und ein normales Dokument machen?", msgbox::YesNoCancel,
                 Title) != msgbox::Yes) {
        return;
    }
    DocumentWalk();
    int deleted = 0;
    for (const word::FieldPtr& field : gathered_) {
        try {
            field->Delete();
            ++deleted;
        } catch (const std::exception&) {
            // A field that cannot be deleted is not counted; the message shows deleted of found.
        }
    }
    try {
        doc_->MailMerge()->MainDocumentType(word::wd::wdNotAMergeDocument);
    } catch (const std::exception&) {
        // A form that is no mail-merge main document has nothing to switch off.
    }
    MyMsgBox(std::to_string(deleted) + "/" + std::to_string(gathered_.size()) +
                 " Seriendruckfelder gelöscht!",
             msgbox::Information, Title);
}

void WordBM::mfWBM_Verify() {
    if (!CheckDoc(true)) {
        return;
    }
    int total = 0;
    int known = 0;
    int adjusted = 0;
    std::vector<std::string> names;
    try {
        names = bookmarkNames();
    } catch (const std::exception&) {
        // Bookmarks that cannot be listed are none to verify; the message then shows 0-total.
    }
    for (const std::string& name : names) {
        ++total;
        const std::string field = fields_.BookmarkFieldGet(name);
        if (field.empty()) {
            continue;
        }
        ++known;
        if (field.starts_with(SlipPrefix)) {
            continue;
        }
        try {
            if (verifyBookmark(doc_->Bookmarks()->Item(name))) {
                ++adjusted;
            }
        } catch (const std::exception&) {
            // A bookmark that cannot be verified is not counted as adjusted.
        }
    }
    MyMsgBox("Textfelder: " + std::to_string(total) + "-total, " + std::to_string(known) + "-bekannt, " +
                 std::to_string(adjusted) + "-angepasst",
             msgbox::Information, "Textmarken verifizieren");
}

// An empty bookmark text is what a "?" text was turned into; it stays empty.
bool WordBM::verifyBookmark(const word::BookmarkPtr& bookmark) {
    const std::string text = bookmark->Range()->Text();
    const int length = characterCount(text);
    if (length == 0) {
        return false;
    }
    const word::SelectionPtr selection = word_->Selection();
    if (secondCharacter(text) == "?") {
        bookmark->Select();
        selection->MoveRight();
        typeBackspaces(*selection, length);
        return true;
    }
    std::string expected = text;
    if (!expected.starts_with('[')) {
        expected.insert(0, "[");
    }
    if (!expected.ends_with(']')) {
        expected += "]";
    }
    if (expected == text) {
        return false;
    }
    // Typed at the bookmark's start the new text lands inside it; the old text then goes from
    // its end, so the bookmark keeps its place and its formatting.
    bookmark->Select();
    selection->MoveLeft();
    selection->TypeText(expected);
    bookmark->Select();
    selection->MoveRight();
    typeBackspaces(*selection, length);
    return true;
}

std::string WordBM::BookmarksConvert() {
    if (!CheckDoc(false)) {
        return {};
    }
    int converted = 0;
    std::vector<std::string> names;
    try {
        names = bookmarkNames();
    } catch (const std::exception&) {
        // Bookmarks that cannot be listed are none to convert; the caller then reports nothing.
    }
    for (const std::string& name : names) {
        const std::string field = fields_.BookmarkFieldGet(name, true);
        if (field.empty() || field.starts_with(SlipPrefix)) {
            continue;
        }
        try {
            const word::BookmarkPtr bookmark = doc_->Bookmarks()->Item(name);
            bookmark->Select();
            bookmark->Delete();
            if (!BookmarkCreate(field).empty()) {
                ++converted;
            }
        } catch (const std::exception&) {
            // A bookmark that cannot be converted is not counted; the message shows the ones that were.
        }
    }
    return converted > 0 ? "Textfelder: " + std::to_string(converted) + "-konvertiert" : std::string();
}

} // namespace wordbm
