#pragma once

#include "engine/ports/UserInterface.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace wordbm {

// A user interface for tests: records every box, display and dialog, and answers from a script.
// OK-only boxes (16, 64) answer OK without using the script; a question with no scripted answer
// left is counted in `unanswered` and answered Cancel (35) or No (36), so a test notices it.
class ScriptedUserInterface : public UserInterface {
public:
    struct Box {
        std::string text;
        int buttons = 0;
        std::string title;
        bool operator==(const Box&) const = default;
    };
    struct Display {
        std::string original;
        std::string working;
    };

    // --- Script ---
    std::deque<int> answers;
    // Window events, delivered one per processEvents or waitEvents call, never while one is being
    // handled. When none is left, waitEvents delivers Quit, as a person closing the window would.
    std::deque<std::pair<WindowEvent, std::string>> events;
    std::deque<std::optional<MergeChoices>> mergeAnswers;
    std::deque<std::optional<SlipChoices>> slipAnswers;
    std::deque<std::optional<std::string>> templateAnswers;
    // stopRequested answers true from this query on (counted from 1); 0 never.
    int stopAtQuery = 0;
    // Called with every box before it is answered, e.g. to close the document under the engine.
    std::function<void(const Box&)> onBox;
    std::string caption = "WordBM";

    // --- Record ---
    std::vector<Box> boxes;
    int unanswered = 0;
    std::optional<Display> wordDoc;
    std::optional<Display> csvDoc;
    std::vector<MainWindowSetup> windows;
    std::string trace;
    std::optional<DocumentCounts> counts;
    // "start <title> <maximum>", "step <position>/<maximum>", "stop".
    std::vector<std::string> progress;
    int stopQueries = 0;
    int processed = 0;
    int mergeDialogs = 0;
    int slipDialogs = 0;
    std::vector<std::string> slipDialogDocs;
    std::vector<ResultList> results;
    std::vector<std::string> templateDialogMasks;

    // The texts of the boxes, in order.
    std::vector<std::string> texts() const;
    // Queues a window event.
    void raise(WindowEvent event, const std::string& argument = {});

    int messageBox(const std::string& text, int buttons, const std::string& title) override;
    std::string mainWindowCaption() const override { return caption; }
    void attach(WindowEventHandler handler) override { handler_ = std::move(handler); }
    void processEvents() override;
    void waitEvents() override;
    void mainWindowExecute(const MainWindowSetup& setup) override;
    void wordDocDisplay(const std::string& original, const std::string& working) override;
    void wordDocDisplayClear() override { wordDoc.reset(); }
    void csvDocDisplay(const std::string& original, const std::string& working) override;
    void csvDocDisplayClear() override { csvDoc.reset(); }
    void traceDisplay(const std::string& text) override { trace = text; }
    void countsDisplay(const DocumentCounts& value) override { counts = value; }
    void progressStart(const std::string& title, int maximum) override;
    void progressStep(int position, int maximum) override;
    void progressLabel(const std::string& text) override { progress.push_back("label " + text); }
    void progressStop() override { progress.emplace_back("stop"); }
    bool stopRequested() override;
    std::optional<MergeChoices> mergeChoicesDialog(OptionsPort& options) override;
    void resultListDialog(const ResultList& result) override { results.push_back(result); }
    std::optional<SlipChoices> slipChoicesDialog(const std::string& document) override;
    std::optional<std::string> fileNameTemplateDialog(const FileNameTemplate& owner,
                                                      const std::string& mask) override;

private:
    void deliver(WindowEvent event, const std::string& argument);
    bool deliverNext();

    WindowEventHandler handler_;
    bool delivering_ = false;
};

} // namespace wordbm
