#include "engine/WordBM.h"

#include "data/ControlFileHints.h"
#include "engine/WorkingCopy.h"
#include "engine/ports/UserInterfaceTemplateEditor.h"
#include "engine/word/Application.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Selection.h"
#include "support/FileOps.h"
#include "support/Folders.h"
#include "support/Strings.h"

#include <exception>
#include <utility>

namespace wordbm {

namespace {

constexpr const char* CrLf = "\r\n";
constexpr const char* OpenTitle = "Word-Rechnungsformular öffnen";
constexpr const char* CSVTitle = "CSV Serienbrief-Steuerdatei";
constexpr const char* CopyBackTitle = "Zurückkopieren";

std::string fileNameOf(const std::string& path) {
    const auto slash = path.find_last_of("\\/");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

} // namespace

WordBM::WordBM(UserInterface& ui, OptionsPort& options, ApplicationFactory createWord)
    : ui_(ui), options_(options), createWord_(std::move(createWord)),
      template_(maskStore_, std::make_unique<UserInterfaceTemplateEditor>(ui)) {
    ui_.attach([this](WindowEvent event, const std::string& argument) { OnEvent(event, argument); });
    fields_.FieldsBESR();
}

WordBM::~WordBM() {
    ui_.attach({});
    try {
        template_.Tini();
    } catch (const std::exception&) {
        // The options store may be gone already; the mask is then simply not remembered.
    }
}

int WordBM::MyMsgBox(const std::string& text, int buttons, const std::string& title) {
    return ui_.messageBox(text, buttons, title.empty() ? ui_.mainWindowCaption() : title);
}

bool WordBM::IsWordAlive(bool showMessage) {
    ui_.processEvents();
    if (!word_) {
        return false;
    }
    try {
        return word_->Documents()->Count() >= 1;
    } catch (const std::exception& failure) {
        if (showMessage) {
            MyMsgBox(std::string(failure.what()) + CrLf + "Word kann nicht angesprochen werden!",
                     msgbox::Information, Title);
        }
        return false;
    }
}

bool WordBM::CheckDoc(bool showMessage) {
    bool ok = false;
    std::string description;
    if (IsWordAlive(showMessage) && doc_) {
        try {
            doc_->Bookmarks()->Count();
            ok = true;
        } catch (const std::exception& failure) {
            description = failure.what();
        }
    }
    if (!ok && wordShown_) {
        wordDocHide();
        if (showMessage && !description.empty()) {
            MyMsgBox(description, msgbox::Information, Title);
        }
    }
    return ok;
}

bool WordBM::mfWBM_OpenWordDoc(const std::string& path) {
    if (path.empty()) {
        WordDocClose();
        return true;
    }
    if (!fileExists(nativePath(path))) {
        MyMsgBox(path + CrLf + "Datei nicht gefunden!", msgbox::Stop, OpenTitle);
        // The session is untouched; the window shows its form again, not the missing path.
        if (wordShown_) {
            ui_.wordDocDisplay(wordDoc_, wordWork_);
        } else {
            ui_.wordDocDisplayClear();
        }
        return false;
    }
    if (!ChangesSettle()) {
        // The open form stays, and the window shows it again instead of the path just given.
        if (wordShown_) {
            ui_.wordDocDisplay(wordDoc_, wordWork_);
        } else {
            ui_.wordDocDisplayClear();
        }
        return false;
    }
    mfWBM_Quit();
    AddInHook("KDX6W.WordAddIn", "Software\\Microsoft\\Office\\Word\\Addins");
    const std::string working = WorkingCopyMake(path);
    wordDoc_ = path;
    wordWork_ = working;
    wordDocShow(path, working);
    try {
        word_ = createWord_();
        if (!word_) {
            throw AutomationError("Word.Application kann nicht erstellt werden.");
        }
        doc_ = word_->Documents()->Open(working);
    } catch (const std::exception& failure) {
        MyMsgBox(std::string("Fehler beim Öffnen von") + CrLf + working + CrLf + failure.what() + CrLf,
                 msgbox::Stop, OpenTitle);
        doc_.reset();
        word_.reset();
        wordWork_.clear();
        wordDocHide();
        return false;
    }
    try {
        word_->Visible(true);
        doc_->Select();
        word_->Selection()->HomeKey(word::wd::wdStory);
    } catch (const std::exception&) {
        // The document is open; where the cursor stands is a convenience.
    }
    return true;
}

void WordBM::mfWBM_OpenCSVDoc(const std::string& path) {
    if (path.empty()) {
        csvDataClear();
        return;
    }
    bool loaded = false;
    if (fileExists(nativePath(path))) {
        csvDataClear();
        csvWork_ = WorkingCopyMake(path);
        ui_.csvDocDisplay(path, csvWork_);
        // The reader takes an unreadable file as an empty one, so the file is tried first.
        const std::string failure = FileOpenCheck(csvWork_);
        if (failure.empty()) {
            csv_.ReadFile(csvWork_, Variant(std::string(";")), Variant(std::string("\"")), Variant(true));
            csvDataReport(path);
            loaded = true;
        } else {
            MyMsgBox(std::string("Fehler beim Öffnen von") + CrLf + path + CrLf + failure, msgbox::Stop,
                     CSVTitle);
            csvDataClear();
        }
    }
    if (!loaded) {
        MyMsgBox(fileNameOf(path) + CrLf + "Kann Datei nicht öffnen!", msgbox::Stop, CSVTitle);
        ui_.csvDocDisplayClear();
        return;
    }
    csvDoc_ = path;
}

void WordBM::Execute(bool mergePage) {
    // Set before the window is filled: opening the command line's files may already quit.
    running_ = true;
    ui_.mainWindowExecute({Template(), csvDoc_, wordDoc_, mergePage, fields_.Items()});
    while (running_) {
        ui_.waitEvents();
    }
    mfWBM_Quit();
}

bool WordBM::mfWBM_Quit(bool force) {
    wordDocHide();
    doc_.reset();
    wordWork_.clear();
    formChanged_ = false;
    if (word_) {
        if (force) {
            try {
                word_->Quit(word::wd::wdDoNotSaveChanges);
            } catch (const std::exception&) {
                // Already gone: nothing left to end.
            }
            word_.reset();
        } else if (IsWordAlive(false) && !askedToClose_) {
            askedToClose_ = true;
            if (MyMsgBox("Word schliessen?", msgbox::YesNo, Title) == msgbox::Yes) {
                try {
                    // Without an argument the word processor decides about unsaved documents.
                    word_->Quit();
                } catch (const std::exception&) {
                    // A word processor that will not quit is let go of all the same; the session ends here.
                }
                word_.reset();
            }
        }
    }
    ui_.processEvents();
    return !word_;
}

bool WordBM::mfWBM_WordCopy(const std::string& original, const std::string& working) {
    return copyBack("Word", original, working);
}

bool WordBM::mfWBM_CSVCopy(const std::string& original, const std::string& working) {
    return copyBack("CSV", original, working);
}

bool WordBM::copyBack(const std::string& kind, const std::string& original, const std::string& working) {
    const std::string label = kind == "Word" ? "Word-Rechnungsformular" : "Rechnungs-Steuerdatei";
    if (MyMsgBox(label + " zurückkopieren?" + CrLf + "Arbeitsdatei:" + CrLf + working + CrLf +
                     "Originaldatei:" + CrLf + original,
                 msgbox::YesNo, CopyBackTitle) != msgbox::Yes) {
        return false;
    }
    if (MyMsgBox(std::string("Die Datei wirklich überschreiben?") + CrLf + "Originaldatei:" + CrLf + original,
                 msgbox::YesNo, "Überschreiben") != msgbox::Yes) {
        return false;
    }
    const std::string failure = FileCopy(nativePath(working), nativePath(original));
    if (!failure.empty()) {
        MyMsgBox(failure, msgbox::Stop, "Originaldatei zurückkopieren");
        return false;
    }
    if (nativePath(working) == nativePath(wordWork_)) {
        formChanged_ = false;
    }
    MyMsgBox("Kopiert", msgbox::Information, "Originaldatei zurückkopieren");
    return true;
}

bool WordBM::WorkingFormSave() {
    if (!doc_ || wordWork_.empty()) {
        return true;
    }
    try {
        // After a merge run without closing, an invoice may be the active document; it is no
        // business of this save.
        if (doc_->Saved() || nativePath(doc_->FullName()) != nativePath(wordWork_)) {
            return true;
        }
        formChanged_ = true;
        doc_->Save();
        return true;
    } catch (const std::exception& failure) {
        UnsavedReport(failure);
        return false;
    }
}

bool WordBM::FormChanged() const {
    if (formChanged_) {
        return true;
    }
    try {
        return doc_ && !wordWork_.empty() && !doc_->Saved() &&
               nativePath(doc_->FullName()) == nativePath(wordWork_);
    } catch (const std::exception&) {
        return false; // a document that cannot be asked has nothing left to keep
    }
}

bool WordBM::ChangesSettle() {
    if (!FormChanged()) {
        return true;
    }
    const int answer = MyMsgBox(
        std::string("Das Word-Rechnungsformular wurde geändert, die Änderungen sind "
                    "nur in der Arbeitsdatei:") +
            CrLf + wordWork_ + CrLf + CrLf + "Änderungen ins Original zurückkopieren?" + CrLf + wordDoc_ +
            CrLf + CrLf + "Ja: zurückkopieren   Nein: Änderungen verwerfen   Abbrechen: weiterarbeiten",
        msgbox::YesNoCancel, "Änderungen nicht zurückkopiert");
    if (answer == msgbox::No) {
        formChanged_ = false; // given up by choice; not asked about again
        return true;
    }
    if (answer != msgbox::Yes) {
        return false;
    }
    // The copy-back reads the working copy from its file.
    return WorkingFormSave() && mfWBM_WordCopy(wordDoc_, wordWork_);
}

void WordBM::UnsavedReport(const std::exception& failure) {
    MyMsgBox(std::string(failure.what()) + CrLf + "Das Word-Rechnungsformular wurde nicht gespeichert!",
             msgbox::Stop, "Word-Rechnungsformular");
}

void WordBM::WordDocClose() {
    const std::string original = wordDoc_;
    const std::string working = wordWork_;
    if (working.empty()) {
        // No working copy, nothing to save or bring back.
        mfWBM_Quit(true);
        return;
    }
    if (MyMsgBox(std::string("Word-Rechnungsdatei wird gespeichert.") + CrLf + "Word wird geschlossen." +
                     CrLf + "Word-Rechnungsdatei wird zurückkopiert." + CrLf + "Weiterfahren?",
                 msgbox::YesNo, CopyBackTitle) == msgbox::No) {
        return;
    }
    if (doc_) {
        try {
            doc_->Save();
        } catch (const std::exception& failure) {
            // A working copy that could not be saved is not the form the person sees: copying it
            // back would put a stale file over the original, so the session stays open instead.
            UnsavedReport(failure);
            return;
        }
        try {
            doc_->Close();
        } catch (const std::exception&) {
            // Ending the session below lets go of a document that will not close.
        }
    }
    if (mfWBM_Quit(true)) {
        mfWBM_WordCopy(original, working);
    }
}

void WordBM::OnEvent(WindowEvent event, const std::string& argument) {
    switch (event) {
    case WindowEvent::Quit:
        if (!ChangesSettle()) {
            break; // the person goes on working
        }
        mfWBM_Quit();
        running_ = false;
        break;
    case WindowEvent::Insert:
        mfWBM_Insert(argument);
        break;
    case WindowEvent::Replace:
        mfWBM_Replace();
        break;
    case WindowEvent::Analyze:
        mfWBM_Analyze();
        break;
    case WindowEvent::Reset:
        mfWBM_Reset();
        break;
    case WindowEvent::Verify:
        mfWBM_Verify();
        break;
    case WindowEvent::OpenWordDoc:
        mfWBM_OpenWordDoc(argument);
        break;
    case WindowEvent::OpenCSVDoc:
        mfWBM_OpenCSVDoc(argument);
        break;
    case WindowEvent::WordCopy:
        if (!wordDoc_.empty() && !wordWork_.empty()) {
            mfWBM_WordCopy(wordDoc_, wordWork_);
        }
        break;
    case WindowEvent::Timer:
        // Once the form is gone from the window there is nothing left to watch, and a dead word
        // processor would otherwise be reported on every tick.
        if (wordShown_) {
            CheckDoc(true);
        }
        break;
    case WindowEvent::Merge:
        mfWBM_Merge();
        break;
    case WindowEvent::Test:
        mfWBM_Test();
        break;
    case WindowEvent::ESQRgo:
        mfWBM_ESQRgo();
        break;
    }
}

void WordBM::AddInHook(const std::string& /*addIn*/, const std::string& /*key*/) {
    // The suite's word-processor add-in is registered by its own installer on this platform.
}

void WordBM::wordDocShow(const std::string& original, const std::string& working) {
    ui_.wordDocDisplay(original, working);
    wordShown_ = true;
}

void WordBM::wordDocHide() {
    if (wordShown_) {
        ui_.wordDocDisplayClear();
        wordShown_ = false;
    }
}

// The file is read as it stands (cp1252, CR LF): a file a spreadsheet saved as UTF-8 with LF reads as
// one line without invoices, and only the hints say why.
void WordBM::csvDataReport(const std::string& path) {
    csvInvoices_ = 0;
    for (std::int32_t row = 1; row <= csv_.LineCount(); ++row) {
        csvInvoices_ += InvoiceRow(row) ? 1 : 0;
    }
    csvHints_ = ControlFileHints::ofFile(csvWork_);
    std::vector<std::string> lines = csvHints_;
    if (csvInvoices_ == 0) {
        lines.insert(lines.begin(), ControlFileHints::NoInvoices);
    }
    if (lines.empty()) {
        return;
    }
    ui_.traceDisplay(join(lines, CrLf));
    if (csvInvoices_ == 0) {
        MyMsgBox(fileNameOf(path) + CrLf + join(lines, CrLf), msgbox::Stop, CSVTitle);
    }
}

void WordBM::csvDataClear() {
    csv_ = CSVfile();
    csvInvoices_ = 0;
    csvHints_.clear();
    csvDoc_.clear();
    csvWork_.clear();
    ui_.csvDocDisplayClear();
}

} // namespace wordbm
