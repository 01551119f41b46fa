#pragma once

#include "engine/ports/UserInterface.h"
#include "engine/word/Forward.h"

#include <QPointer>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>

class QProgressDialog;

namespace wordbm {

class frmWordBM;

// The engine's way to a person on the desktop: Qt message boxes, the main window frmWordBM and a
// progress dialog that keeps the window responsive while a long run goes on in the engine.
class QtUserInterface : public UserInterface {
public:
    QtUserInterface();
    ~QtUserInterface() override;
    QtUserInterface(const QtUserInterface&) = delete;
    QtUserInterface& operator=(const QtUserInterface&) = delete;

    frmWordBM& window() { return *window_; }
    // Where the form view reads the engine's open document; set once the engine exists.
    void documentSource(std::function<word::DocumentPtr()> source);
    // Used for the new-form folder; must outlive this object.
    void options(OptionsPort* options);
    // Answers the boxes instead of a person when set (tests); gets text, buttons and title.
    std::function<int(const std::string&, int, const std::string&)> answerBox;
    // Runs after the engine has handled a command of the window (not the timer's check).
    std::function<void(WindowEvent)> afterCommand;

    int messageBox(const std::string& text, int buttons, const std::string& title) override;
    std::string mainWindowCaption() const override;
    void attach(WindowEventHandler handler) override { handler_ = std::move(handler); }
    void processEvents() override;
    void waitEvents() override;
    void mainWindowExecute(const MainWindowSetup& setup) override;
    void wordDocDisplay(const std::string& original, const std::string& working) override;
    void wordDocDisplayClear() override;
    void csvDocDisplay(const std::string& original, const std::string& working) override;
    void csvDocDisplayClear() override;
    void traceDisplay(const std::string& trace) override;
    void countsDisplay(const DocumentCounts& counts) override;
    void progressStart(const std::string& title, int maximum) override;
    void progressStep(int position, int maximum) override;
    void progressStop() override;
    bool stopRequested() override { return stop_; }
    std::optional<MergeChoices> mergeChoicesDialog(OptionsPort& options) override;
    void resultListDialog(const ResultList& result) override;
    std::optional<SlipChoices> slipChoicesDialog(const std::string& wordDoc) override;
    std::optional<std::string> fileNameTemplateDialog(const FileNameTemplate& owner,
                                                      const std::string& mask) override;

private:
    // Hands a window event to the engine; one raised while another is handled waits its turn, so
    // the engine never handles two at once.
    void raise(WindowEvent event, const std::string& argument);

    std::unique_ptr<frmWordBM> window_;
    WindowEventHandler handler_;
    std::deque<std::pair<WindowEvent, std::string>> pending_;
    bool dispatching_ = false;
    QPointer<QProgressDialog> progress_;
    bool stop_ = false;
};

} // namespace wordbm
