#pragma once

#include "engine/ports/DocumentCounts.h"
#include "engine/ports/MainWindowSetup.h"
#include "engine/ports/MergeChoices.h"
#include "engine/ports/ResultList.h"
#include "engine/ports/SlipChoices.h"
#include "engine/ports/WindowEvent.h"

#include <optional>
#include <string>

namespace wordbm {

class FileNameTemplate;
class OptionsPort;

// Message box buttons and answers, with the classic numbers the texts of the program are tied to.
namespace msgbox {
inline constexpr int Stop = 16;        // stop sign, OK
inline constexpr int YesNoCancel = 35; // question, Yes/No/Cancel
inline constexpr int YesNo = 36;       // question, Yes/No
inline constexpr int Information = 64; // information, OK

inline constexpr int Ok = 1;
inline constexpr int Cancel = 2;
inline constexpr int Yes = 6;
inline constexpr int No = 7;
} // namespace msgbox

// The engine's only way to a person: boxes, dialogs, the progress display, the main window's
// displays and its events. Implemented by the Qt window, the terminal (batch verbs) and a
// scripted one for tests. Display updates never raise window events.
class UserInterface {
public:
    virtual ~UserInterface() = default;

    // Shows the text with the buttons (msgbox codes) and returns the answer (msgbox answers).
    virtual int messageBox(const std::string& text, int buttons, const std::string& title) = 0;
    // Stands in for an empty title.
    virtual std::string mainWindowCaption() const = 0;

    // The engine listens to the main window through this handler; an empty one detaches it.
    virtual void attach(WindowEventHandler handler) = 0;
    // Lets pending events run, window events included, and returns at once.
    virtual void processEvents() = 0;
    // The main loop's short wait: lets events run, waiting a little for one when none is pending.
    virtual void waitEvents() = 0;

    // Fills the window from the setup and shows it. Filling the two path boxes raises OpenCSVDoc
    // and then OpenWordDoc for paths that are not empty, as a person's typing would.
    virtual void mainWindowExecute(const MainWindowSetup& setup) = 0;
    // The form in the window: its original path and the working copy the engine opened.
    virtual void wordDocDisplay(const std::string& original, const std::string& working) = 0;
    virtual void wordDocDisplayClear() = 0;
    virtual void csvDocDisplay(const std::string& original, const std::string& working) = 0;
    virtual void csvDocDisplayClear() = 0;
    // The indented trace of the last document walk, lines joined by CR LF.
    virtual void traceDisplay(const std::string& trace) = 0;
    virtual void countsDisplay(const DocumentCounts& counts) = 0;

    // A maximum of 0 shows activity without a measure; a step may change the maximum.
    virtual void progressStart(const std::string& title, int maximum) = 0;
    virtual void progressStep(int position, int maximum) = 0;
    // Where the run stands, in words: lines joined by CR LF ("Rechnung 7 von 24", the customer).
    virtual void progressLabel(const std::string& text) = 0;
    virtual void progressStop() = 0;
    // The person asked a long run to stop; it stops between two items.
    virtual bool stopRequested() = 0;

    // The merge dialog reads and stores its choices under "Options" itself; nullopt when cancelled.
    virtual std::optional<MergeChoices> mergeChoicesDialog(OptionsPort& options) = 0;
    virtual void resultListDialog(const ResultList& result) = 0;
    // wordDoc is the form's file name the dialog shows; nullopt when cancelled.
    virtual std::optional<SlipChoices> slipChoicesDialog(const std::string& wordDoc) = 0;
    // The file-name template editor; the edited mask when confirmed, nullopt otherwise.
    virtual std::optional<std::string> fileNameTemplateDialog(const FileNameTemplate& owner,
                                                              const std::string& mask) = 0;
};

} // namespace wordbm
