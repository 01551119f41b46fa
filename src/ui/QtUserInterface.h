#pragma once

#include "engine/ports/UserInterface.h"
#include "engine/word/Forward.h"
#include "ui/frmMerge.h"

#include <QPointer>
#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>

class QProgressDialog;

namespace wordbm {

class frmWordBM;

// The engine's way to a person on the desktop: Qt message boxes, the main window frmWordBM and a
// progress dialog. The engine's commands run off the window's thread (BackgroundTask), one at a
// time, with the window marked busy; what the engine asks of a person from there is carried over
// to the window's thread and waited for, so every widget is only ever touched on that thread.
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
    // Runs after the engine has handled a command of the window (not the timer's check), still
    // off the window's thread.
    std::function<void(WindowEvent)> afterCommand;
    // What the merge dialog tells of the run ahead; read on the engine's thread before it shows.
    std::function<frmMerge::Plan()> mergePlan;
    // Whether the working form holds changes not copied back; read after every command.
    std::function<bool()> formChanged;
    // Runs engine work off the window's thread while the window is marked busy, and returns when
    // it has ended. False, without running it, while other engine work is under way.
    bool engineWork(const std::function<void()>& work);

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
    void progressLabel(const std::string& text) override;
    void progressStop() override;
    bool stopRequested() override { return stop_.load(); }
    std::optional<MergeChoices> mergeChoicesDialog(OptionsPort& options) override;
    void resultListDialog(const ResultList& result) override;
    std::optional<SlipChoices> slipChoicesDialog(const std::string& wordDoc) override;
    std::optional<std::string> fileNameTemplateDialog(const FileNameTemplate& owner,
                                                      const std::string& mask) override;

private:
    // Hands a window event to the engine; one raised while another is handled waits its turn, so
    // the engine never handles two at once.
    void raise(WindowEvent event, const std::string& argument);
    // Brings the window's views up to the engine's state after a command.
    void followState();
    // Runs `call` on the window's thread and returns its result; the engine may call from a
    // thread of its own.
    template <typename Call> auto onWindow(Call call) -> decltype(call());
    int windowMessageBox(const std::string& text, int buttons, const std::string& title);
    void windowProgressStart(const std::string& title, int maximum);
    void windowProgressStep(int position, int maximum);
    void windowProgressLabel(const QString& text);

    std::unique_ptr<frmWordBM> window_;
    WindowEventHandler handler_;
    std::deque<std::pair<WindowEvent, std::string>> pending_;
    bool dispatching_ = false;
    bool working_ = false;
    QPointer<QProgressDialog> progress_;
    std::atomic<bool> stop_ = false;
};

} // namespace wordbm
