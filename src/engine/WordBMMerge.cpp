// The merge run and the file-name test of the engine.
#include "engine/WordBM.h"
#include "engine/merge/BookmarkFiller.h"
#include "engine/merge/MergeRun.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/WordConstants.h"
#include "qrbill/PrintedCode.h"
#include "support/FileOps.h"

#include <filesystem>
#include <system_error>

namespace wordbm {

namespace fs = std::filesystem;

void WordBM::mfWBM_Merge(bool testOnly) {
    if (!CheckDoc(true)) {
        return;
    }
    MergeChoices choices;
    if (!testOnly) {
        const std::optional<MergeChoices> chosen = ui_.mergeChoicesDialog(options_);
        if (!chosen) {
            return;
        }
        choices = *chosen;
        // A deleted invoice cannot stay open.
        choices.Close = choices.Close || choices.Delete;
    }
    MergeRun(*this, choices, testOnly).run();
}

void WordBM::mfWBM_Test() {
    mfWBM_Merge(true);
}

void WordBM::ShowFailure(const std::string& text) {
    MyMsgBox(text, msgbox::Stop, Title);
}

BookmarkFiller WordBM::filler() {
    return BookmarkFiller(fields_, csv_, coder_, qrImage_, slip_.get(), [this] { ui_.processEvents(); });
}

void WordBM::BookmarksFill(std::int32_t row) {
    if (!CheckDoc()) {
        return;
    }
    // What could not be filled is listed by the merge run, which fills through its own filler.
    filler().fill(*word_, *doc_, row);
}

bool WordBM::InvoiceRow(std::int32_t row) {
    return !csv_.FieldStr("RgDatum", row).empty();
}

std::string WordBM::InvoicePreview(const std::string& pdfPath, int invoice) {
    if (!CheckDoc()) {
        return "Kein Word-Rechnungsformular geöffnet";
    }
    // Invoice n is the n-th row the merge run makes an invoice of; rows without a date count not.
    std::int32_t row = 0;
    for (int found = 0; found < invoice && row <= csv_.LineCount();) {
        ++row;
        found += row <= csv_.LineCount() && InvoiceRow(row) ? 1 : 0;
    }
    if (invoice < 1 || row > csv_.LineCount()) {
        return invoice <= 1 ? "Keine Rechnung in der Rechnungs-Steuerdatei"
                            : "Keine Rechnung " + std::to_string(invoice) + " in der Rechnungs-Steuerdatei";
    }
    previewRow_ = 0;
    // The copy keeps the working form's kind, so that a .docm stays one.
    const fs::path copy = fs::path(pdfPath).parent_path() /
                          ("Rechnung " + std::to_string(invoice) + fs::path(wordWork_).extension().string());
    try {
        doc_->SaveCopyAs(copy.string());
        const word::ApplicationPtr app = createWord_();
        const word::DocumentPtr filled = app->Documents()->Open(copy.string());
        filler().fill(*app, *filled, row);
        filled->ExportAsFixedFormat(pdfPath, word::wd::wdExportFormatPDF);
        app->Quit(word::wd::wdDoNotSaveChanges);
    } catch (const std::exception& failure) {
        return failure.what();
    }
    previewRow_ = row;
    return {};
}

std::optional<std::string> WordBM::InvoicePreviewCode(const std::string& pdfPath) {
    if (previewRow_ < 1 || !CheckDoc(false)) {
        return std::nullopt;
    }
    bool carriesCode = false;
    try {
        const word::BookmarksPtr bookmarks = doc_->Bookmarks();
        for (int i = 1; i <= bookmarks->Count() && !carriesCode; ++i) {
            carriesCode = BookmarkFiller::isCodePicture(fields_.BookmarkFieldGet(bookmarks->Item(i)->Name()));
        }
    } catch (const std::exception&) {
        return std::nullopt; // a form that cannot be read had no preview to check either
    }
    if (!carriesCode) {
        return std::nullopt;
    }
    return PrintedCode::verdict(pdfPath, coder_.QRText(previewRow_));
}

bool WordBM::DocFolderCheck(const std::string& docPath) {
    const std::string path = FileNameTemplate::nativeDocPath(docPath);
    const auto slash = path.rfind('/');
    if (slash == std::string::npos) {
        return true; // the current folder
    }
    const std::string folder = slash == 0 ? std::string("/") : path.substr(0, slash);
    if (folderExists(folder)) {
        return true;
    }
    std::error_code ignored;
    std::filesystem::create_directory(folder, ignored);
    return folderExists(folder);
}

} // namespace wordbm
