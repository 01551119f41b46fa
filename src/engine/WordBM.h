#pragma once

#include "data/CSVfile.h"
#include "data/KnownFields.h"
#include "engine/merge/MergeSession.h"
#include "engine/ports/OptionsMaskStore.h"
#include "engine/ports/OptionsPort.h"
#include "engine/ports/ResultList.h"
#include "engine/ports/SlipPort.h"
#include "engine/ports/UserInterface.h"
#include "engine/word/Forward.h"
#include "names/FileNameTemplate.h"
#include "qrbill/QRCoder.h"
#include "qrbill/QRImage.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace wordbm {

class BookmarkFiller;

// The Word bookmark engine: one word-processor session on a working copy of the user's form,
// the document walk and analysis, merge-field conversion, bookmark insertion and verification,
// and the merge run. It owns its companions for the whole run and reaches a person only through
// the UserInterface. Every automation call that may fail is guarded: a failure is caught where it
// happens, shown where a message belongs, and never leaves the engine. The merge run reads it as its
// MergeSession.
class WordBM : private MergeSession {
public:
    // Creates a new word-processor instance on every call; may throw AutomationError.
    using ApplicationFactory = std::function<word::ApplicationPtr()>;

    static constexpr const char* Title = "Word-Rechnungsformular";

    // ui and options must outlive the engine. Attaches the engine to the main window's events.
    WordBM(UserInterface& ui, OptionsPort& options, ApplicationFactory createWord);
    // Stores the file-name mask and detaches from the main window.
    ~WordBM();
    WordBM(const WordBM&) = delete;
    WordBM& operator=(const WordBM&) = delete;

    // --- Properties (set by the program entry before Execute) ---
    const std::string& WordDoc() const override { return wordDoc_; }
    void WordDoc(const std::string& path) { wordDoc_ = path; }
    const std::string& CSVDoc() const override { return csvDoc_; }
    void CSVDoc(const std::string& path) { csvDoc_ = path; }
    const std::string& Template() const { return template_.Template(); }
    // "" loads the stored mask.
    void Template(const std::string& mask) { template_.Template(mask); }

    // The working copies of the session; "" when there is none.
    const std::string& WordWork() const override { return wordWork_; }
    const std::string& CSVWork() const override { return csvWork_; }

    // --- Companions ---
    KnownFields& Fields() override { return fields_; }
    CSVfile& CSV() override { return csv_; }
    QRCoder& Coder() override { return coder_; }
    QRImage& QRComponent() override { return qrImage_; }
    FileNameTemplate& NameTemplate() override { return template_; }
    OptionsPort& Options() { return options_; }
    UserInterface& UI() override { return ui_; }
    // The slip builder that handles "ESQR" bookmarks; none leaves them alone.
    void SlipBuilder(std::unique_ptr<SlipPort> slip) { slip_ = std::move(slip); }
    SlipPort* SlipBuilder() const override { return slip_.get(); }

    const word::ApplicationPtr& Word() const override { return word_; }
    const word::DocumentPtr& Doc() const override { return doc_; }

    // --- Session and working copy ---
    // The engine's only message box; an empty title becomes the main window's caption.
    int MyMsgBox(const std::string& text, int buttons, const std::string& title = {});
    // A word processor is attached and has at least one document open.
    bool IsWordAlive(bool showMessage = false);
    // IsWordAlive, a document is open and its bookmarks can be counted.
    bool CheckDoc(bool showMessage = false) override;
    // Opens a working copy of the form in a new word-processor instance. An empty path closes the
    // form instead (save, end the session, offer the copy-back).
    bool mfWBM_OpenWordDoc(const std::string& path);
    // Takes a control file for the merge run; an empty path lets go of it.
    void mfWBM_OpenCSVDoc(const std::string& path);
    // The main loop: shows the main window and handles its events until it quits.
    void Execute(bool mergePage);
    // Ends the session; force quits without asking and without saving. True when no word
    // processor remains attached.
    bool mfWBM_Quit(bool force = false) override;
    // Copies a working file back over its original after two confirmations.
    bool mfWBM_WordCopy(const std::string& original, const std::string& working);
    // Saves the working form when it has changes not yet saved; false (after a message) when the
    // save fails. Where the program itself is the word processor, nothing else would save it, and
    // the merge run and the copy-back both read the working form from its file.
    bool WorkingFormSave();
    // The working form holds changes that were not copied back to the original: saved into the
    // working copy, or not even that.
    bool FormChanged() const;
    // Before changes not copied back would be thrown away (another form, the end of the
    // program): asks whether to copy them back, throw them away or stay. True when the caller
    // may go on: nothing changed, copied back, or thrown away by the person's choice.
    bool ChangesSettle();
    bool mfWBM_CSVCopy(const std::string& original, const std::string& working);
    // Saves and closes the working form, ends the session and offers the copy-back.
    void WordDocClose();
    // Carries out one event of the main window.
    void OnEvent(WindowEvent event, const std::string& argument);
    bool Running() const { return running_; }

    // --- Document analysis ---
    void DocumentWalk();
    void FieldsWalk(const word::FieldsPtr& fields);
    void TraceAdd(const std::string& text);
    void mfWBM_Analyze();
    // Counts and traces the open form again for the window's displays, without a message, so
    // that they show the form as it is after a command changed it.
    void CountsShow();

    // The state of the last walk.
    const std::string& Trace() const { return trace_; }
    int MergeFieldsTotal() const { return mergeFieldsTotal_; }
    int MergeFieldsKnown() const { return mergeFieldsKnown_; }
    // The known merge fields in visiting order; a field reached twice is listed twice. Those inside
    // another field are left out: conversion and reset leave them, and the trace marks them NESTED.
    const std::vector<word::FieldPtr>& Gathered() const { return gathered_; }
    int BookmarksTotal() const { return bookmarksTotal_; }
    int BookmarksKnown() const { return bookmarksKnown_; }

    // --- Merge-field conversion, bookmark insertion and verification ---
    // Types "[field]" over the selection and puts a new engine bookmark over it; the bookmark's
    // name, or "" when nothing could be placed.
    std::string BookmarkCreate(const std::string& field);
    void mfWBM_Insert(const std::string& field);
    void mfWBM_Replace();
    void mfWBM_Reset();
    void mfWBM_Verify();
    // Renames bookmarks of the number-first layout; "Textfelder: n-konvertiert" or "".
    std::string BookmarksConvert();
    // Fields replaced by the last mfWBM_Replace.
    int ReplacedCount() const { return replaced_; }

    // --- Merge run and payment slip: implemented with those features (WordBMMerge.cpp and the
    // slip's own file), not here ---
    void mfWBM_Merge(bool testOnly = false);
    void mfWBM_Test();
    // Fills the open form from data line `row`.
    void BookmarksFill(std::int32_t row);
    // The merge run makes an invoice of a data line that has an invoice date.
    bool InvoiceRow(std::int32_t row) override;
    // Fills a copy of the open form, as it stands now, from the row of invoice `invoice` (1 is the
    // first row with an invoice date) and exports it as PDF to `pdfPath`, the copy beside it; the
    // form itself stays as it is. "" or why there is none.
    std::string InvoicePreview(const std::string& pdfPath, int invoice = 1);
    // The QR code of the PDF that InvoicePreview wrote, read back as the merge run reads every
    // invoice's: nullopt when the form carries no QR code, "" when the code holds the row's data,
    // otherwise the German reason.
    std::optional<std::string> InvoicePreviewCode(const std::string& pdfPath);
    // Whether the folder of the document path exists, after one attempt to create it.
    bool DocFolderCheck(const std::string& docPath) override;
    // How many invoices are made side by side, each by a thread of its own on its own copy of the
    // form; 1 (the default) makes them one after another on the session's document.
    int MergeJobs() const override { return mergeJobs_; }
    void MergeJobs(int jobs) { mergeJobs_ = jobs < 1 ? 1 : jobs; }
    // What the result list of the last merge or test run showed.
    const ResultList& MergeResult() const { return mergeResult_; }
    // The rows of the open control file that have an invoice date.
    std::int32_t CSVInvoices() const { return csvInvoices_; }
    // Why the open control file may read otherwise than its author meant (German lines).
    const std::vector<std::string>& CSVHints() const { return csvHints_; }
    void mfWBM_ESQRgo();

private:
    // Tells the person that the working form could not be saved, and why.
    void UnsavedReport(const std::exception& failure);
    // The rest of what the merge run reads and hands back.
    const ApplicationFactory& WordFactory() const override { return createWord_; }
    void MergeResult(const ResultList& result) override { mergeResult_ = result; }
    void ShowFailure(const std::string& text) override;
    word::DocumentPtr& OpenDoc() override { return doc_; }

    // Fills from the control file, as the merge run does, letting window events run between bookmarks.
    BookmarkFiller filler();
    void AddInHook(const std::string& addIn, const std::string& key);
    void wordDocShow(const std::string& original, const std::string& working);
    void wordDocHide();
    void csvDataClear();
    // Counts the control file's invoices and tells the person when it holds none or was saved in
    // another form than the billing program writes.
    void csvDataReport(const std::string& path);
    bool copyBack(const std::string& kind, const std::string& original, const std::string& working);
    // How many fields the field's code and result hold, at any depth.
    static int nestedFieldCount(const word::FieldPtr& field);
    void walkShape(const word::ShapePtr& shape);
    void walkSection(const word::SectionPtr& section);
    void walkHeadersFooters(const word::HeadersFootersPtr& parts, const std::string& kind,
                            const std::string& closing);
    void traceOpen(const std::string& text);
    void traceClose(const std::string& text);
    std::string bookmarkLine();
    bool verifyBookmark(const word::BookmarkPtr& bookmark);
    std::vector<std::string> bookmarkNames();

    UserInterface& ui_;
    OptionsPort& options_;
    ApplicationFactory createWord_;

    KnownFields fields_;
    CSVfile csv_;
    QRCoder coder_{csv_};
    QRImage qrImage_;
    OptionsMaskStore maskStore_{options_};
    FileNameTemplate template_;
    std::unique_ptr<SlipPort> slip_;

    word::ApplicationPtr word_;
    word::DocumentPtr doc_;
    std::string wordDoc_;
    std::string csvDoc_;
    std::string wordWork_;
    std::string csvWork_;
    // The data line of the last invoice preview; 0 before one was written.
    std::int32_t previewRow_ = 0;
    std::int32_t csvInvoices_ = 0;
    std::vector<std::string> csvHints_;
    bool wordShown_ = false;
    bool askedToClose_ = false;
    bool formChanged_ = false;
    bool running_ = false;

    int mergeFieldsTotal_ = 0;
    int mergeFieldsKnown_ = 0;
    std::vector<word::FieldPtr> gathered_;
    int depth_ = 0;
    std::string trace_;
    int bookmarksTotal_ = 0;
    int bookmarksKnown_ = 0;
    int replaced_ = 0;

    int mergeJobs_ = 1;
    ResultList mergeResult_;
};

} // namespace wordbm
