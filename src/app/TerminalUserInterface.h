#pragma once

#include "engine/ports/UserInterface.h"

#include <atomic>
#include <iosfwd>
#include <optional>
#include <string>

namespace wordbm {

// The user interface of the batch verbs: boxes and results are printed, questions are answered by
// a policy fixed at construction, progress is a bar when the output is a terminal. There is no
// window: Execute opens the files it was given and ends at once.
class TerminalUserInterface : public UserInterface {
public:
    struct Policy {
        // The answer to every question; Cancel answers a Yes/No question with No.
        int answer = msgbox::Yes;
        // What the merge dialog returns; nullopt cancels the run.
        std::optional<MergeChoices> merge;
        bool progressBar = false;
        // Print the trace of every document walk.
        bool trace = false;
    };

    // Boxes, traces and results go to `out`; stop boxes and the progress bar to `err`.
    TerminalUserInterface(std::ostream& out, std::ostream& err, Policy policy);

    // Safe to call from a signal handler: the running command stops at its next item.
    void requestStop() { stop_ = true; }
    // Stop boxes (code 16) shown so far: the verbs' failures.
    int stopBoxes() const { return stopBoxes_; }

    int messageBox(const std::string& text, int buttons, const std::string& title) override;
    std::string mainWindowCaption() const override { return "WordBM"; }
    void attach(WindowEventHandler handler) override { handler_ = std::move(handler); }
    void processEvents() override {}
    void waitEvents() override;
    void mainWindowExecute(const MainWindowSetup& setup) override;
    void wordDocDisplay(const std::string&, const std::string&) override {}
    void wordDocDisplayClear() override {}
    void csvDocDisplay(const std::string&, const std::string&) override {}
    void csvDocDisplayClear() override {}
    void traceDisplay(const std::string& trace) override;
    void countsDisplay(const DocumentCounts&) override {}
    void progressStart(const std::string& title, int maximum) override;
    void progressStep(int position, int maximum) override;
    // The bar says how far the run is; the invoice's words are for the window.
    void progressLabel(const std::string&) override {}
    void progressStop() override;
    bool stopRequested() override { return stop_; }
    std::optional<MergeChoices> mergeChoicesDialog(OptionsPort& options) override;
    void resultListDialog(const ResultList& result) override;
    std::optional<SlipChoices> slipChoicesDialog(const std::string& wordDoc) override;
    std::optional<std::string> fileNameTemplateDialog(const FileNameTemplate& owner,
                                                      const std::string& mask) override;

    // CR LF and lone CR become the terminal's line feed.
    static std::string terminalText(const std::string& text);

private:
    void drawBar(int position, int maximum);

    std::ostream& out_;
    std::ostream& err_;
    Policy policy_;
    WindowEventHandler handler_;
    std::atomic<bool> stop_{false};
    int stopBoxes_ = 0;
    std::string progressTitle_;
    bool barShown_ = false;
};

} // namespace wordbm
