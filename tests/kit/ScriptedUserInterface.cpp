#include "kit/ScriptedUserInterface.h"

namespace wordbm {

std::vector<std::string> ScriptedUserInterface::texts() const {
    std::vector<std::string> result;
    result.reserve(boxes.size());
    for (const Box& box : boxes) {
        result.push_back(box.text);
    }
    return result;
}

void ScriptedUserInterface::raise(WindowEvent event, const std::string& argument) {
    events.emplace_back(event, argument);
}

int ScriptedUserInterface::messageBox(const std::string& text, int buttons, const std::string& title) {
    boxes.push_back({text, buttons, title});
    if (onBox) {
        onBox(boxes.back());
    }
    if (buttons != msgbox::YesNo && buttons != msgbox::YesNoCancel) {
        return msgbox::Ok;
    }
    if (answers.empty()) {
        ++unanswered;
        return buttons == msgbox::YesNo ? msgbox::No : msgbox::Cancel;
    }
    const int answer = answers.front();
    answers.pop_front();
    return answer;
}

void ScriptedUserInterface::processEvents() {
    ++processed;
    deliverNext();
}

void ScriptedUserInterface::waitEvents() {
    ++processed;
    if (!deliverNext() && !delivering_) {
        deliver(WindowEvent::Quit, {});
    }
}

void ScriptedUserInterface::mainWindowExecute(const MainWindowSetup& setup) {
    windows.push_back(setup);
    if (!setup.CSVDoc.empty()) {
        deliver(WindowEvent::OpenCSVDoc, setup.CSVDoc);
    }
    if (!setup.WordDoc.empty()) {
        deliver(WindowEvent::OpenWordDoc, setup.WordDoc);
    }
}

void ScriptedUserInterface::wordDocDisplay(const std::string& original, const std::string& working) {
    wordDoc = Display{original, working};
}

void ScriptedUserInterface::csvDocDisplay(const std::string& original, const std::string& working) {
    csvDoc = Display{original, working};
}

void ScriptedUserInterface::progressStart(const std::string& title, int maximum) {
    progress.push_back("start " + title + " " + std::to_string(maximum));
}

void ScriptedUserInterface::progressStep(int position, int maximum) {
    progress.push_back("step " + std::to_string(position) + "/" + std::to_string(maximum));
}

bool ScriptedUserInterface::stopRequested() {
    ++stopQueries;
    return stopAtQuery > 0 && stopQueries >= stopAtQuery;
}

std::optional<MergeChoices> ScriptedUserInterface::mergeChoicesDialog(OptionsPort& /*options*/) {
    ++mergeDialogs;
    if (mergeAnswers.empty()) {
        return std::nullopt;
    }
    auto answer = mergeAnswers.front();
    mergeAnswers.pop_front();
    return answer;
}

std::optional<SlipChoices> ScriptedUserInterface::slipChoicesDialog(const std::string& document) {
    ++slipDialogs;
    slipDialogDocs.push_back(document);
    if (slipAnswers.empty()) {
        return std::nullopt;
    }
    auto answer = slipAnswers.front();
    slipAnswers.pop_front();
    return answer;
}

std::optional<std::string> ScriptedUserInterface::fileNameTemplateDialog(const FileNameTemplate& /*owner*/,
                                                                         const std::string& mask) {
    templateDialogMasks.push_back(mask);
    if (templateAnswers.empty()) {
        return std::nullopt;
    }
    auto answer = templateAnswers.front();
    templateAnswers.pop_front();
    return answer;
}

void ScriptedUserInterface::deliver(WindowEvent event, const std::string& argument) {
    if (!handler_) {
        return;
    }
    // A window event runs to its end before the next one, as under a modal command.
    const bool outer = delivering_;
    delivering_ = true;
    handler_(event, argument);
    delivering_ = outer;
}

bool ScriptedUserInterface::deliverNext() {
    if (delivering_ || events.empty()) {
        return false;
    }
    const auto [event, argument] = events.front();
    events.pop_front();
    deliver(event, argument);
    return true;
}

} // namespace wordbm
