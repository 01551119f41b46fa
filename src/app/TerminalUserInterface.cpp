#include "app/TerminalUserInterface.h"

#include <algorithm>
#include <ostream>

namespace wordbm {

namespace {

constexpr int BarWidth = 30;

std::string answerText(int answer) {
    switch (answer) {
    case msgbox::Yes:
        return "Ja";
    case msgbox::No:
        return "Nein";
    default:
        return "Abbrechen";
    }
}

} // namespace

TerminalUserInterface::TerminalUserInterface(std::ostream& out, std::ostream& err, Policy policy)
    : out_(out), err_(err), policy_(std::move(policy)) {}

std::string TerminalUserInterface::terminalText(const std::string& text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r') {
            result += '\n';
            if (i + 1 < text.size() && text[i + 1] == '\n') {
                ++i;
            }
        } else {
            result += text[i];
        }
    }
    return result;
}

int TerminalUserInterface::messageBox(const std::string& text, int buttons, const std::string& title) {
    const bool stop = buttons == msgbox::Stop;
    std::ostream& stream = stop ? err_ : out_;
    if (stop) {
        ++stopBoxes_;
    }
    stream << "[" << title << "] " << terminalText(text) << "\n";
    if (buttons != msgbox::YesNo && buttons != msgbox::YesNoCancel) {
        return msgbox::Ok;
    }
    int answer = policy_.answer;
    if (buttons == msgbox::YesNo && answer == msgbox::Cancel) {
        answer = msgbox::No;
    }
    stream << "  -> " << answerText(answer) << "\n";
    return answer;
}

void TerminalUserInterface::waitEvents() {
    // Nobody can raise another event: the terminal's "window" closes at once.
    if (handler_) {
        handler_(WindowEvent::Quit, {});
    }
}

void TerminalUserInterface::mainWindowExecute(const MainWindowSetup& setup) {
    if (!handler_) {
        return;
    }
    if (!setup.CSVDoc.empty()) {
        handler_(WindowEvent::OpenCSVDoc, setup.CSVDoc);
    }
    if (!setup.WordDoc.empty()) {
        handler_(WindowEvent::OpenWordDoc, setup.WordDoc);
    }
}

void TerminalUserInterface::traceDisplay(const std::string& trace) {
    if (policy_.trace) {
        out_ << terminalText(trace) << "\n";
    }
}

void TerminalUserInterface::progressStart(const std::string& title, int maximum) {
    progressTitle_ = title;
    if (policy_.progressBar) {
        drawBar(0, maximum);
    }
}

void TerminalUserInterface::progressStep(int position, int maximum) {
    if (policy_.progressBar) {
        drawBar(position, maximum);
    }
}

void TerminalUserInterface::progressStop() {
    if (barShown_) {
        err_ << "\n";
        barShown_ = false;
    }
}

void TerminalUserInterface::drawBar(int position, int maximum) {
    const int filled = maximum > 0 ? std::clamp(position * BarWidth / maximum, 0, BarWidth) : 0;
    err_ << "\r" << progressTitle_ << " [" << std::string(static_cast<std::size_t>(filled), '#')
         << std::string(static_cast<std::size_t>(BarWidth - filled), ' ') << "] " << position;
    if (maximum > 0) {
        err_ << "/" << maximum;
    }
    err_.flush();
    barShown_ = true;
}

std::optional<MergeChoices> TerminalUserInterface::mergeChoicesDialog(OptionsPort& /*options*/) {
    // The verb's switches are the choices; they are not remembered as the dialog's would be.
    return policy_.merge;
}

void TerminalUserInterface::resultListDialog(const ResultList& result) {
    out_ << (result.testOnly ? "Dateinamen testen" : "Dateien verarbeitet") << "\n";
    std::size_t failed = 0;
    for (std::size_t i = 0; i < result.lines.size(); ++i) {
        const bool marked = failed < result.failedLines.size() && result.failedLines[failed] == i;
        failed += marked ? 1 : 0;
        const std::string& line = result.lines[i];
        // The mark takes the place of an invoice line's indent, so the paths stay aligned.
        const std::string shown = !marked                  ? line
                                  : line.starts_with("  ") ? "! " + line.substr(2)
                                                           : "! " + line;
        out_ << terminalText(shown) << "\n";
    }
    if (result.testOnly) {
        out_ << "Es wurde geprüft, ob die Ordner vorhanden sind.\n";
    }
    out_ << result.total << "   Total\n" << result.ok << "   Ok\n" << result.errors << "   Fehler\n";
}

std::optional<SlipChoices> TerminalUserInterface::slipChoicesDialog(const std::string& /*wordDoc*/) {
    if (policy_.answer != msgbox::Yes) {
        return std::nullopt;
    }
    return SlipChoices{};
}

std::optional<std::string> TerminalUserInterface::fileNameTemplateDialog(const FileNameTemplate& /*owner*/,
                                                                         const std::string& /*mask*/) {
    return std::nullopt;
}

} // namespace wordbm
