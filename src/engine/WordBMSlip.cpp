// The payment-slip command of the engine.
#include "engine/WordBM.h"
#include "engine/word/Application.h"

#include <exception>

namespace wordbm {

namespace {

constexpr const char* SlipTitle = "Einzahlungsschein QR";

} // namespace

void WordBM::mfWBM_ESQRgo() {
    if (!CheckDoc(true) || !slip_) {
        return;
    }
    const std::optional<SlipChoices> choices = ui_.slipChoicesDialog(wordDoc_);
    if (!choices) {
        return;
    }
    std::string failure;
    try {
        word_->ScreenUpdating(false);
        slip_->Build(*word_, *doc_, *choices);
    } catch (const std::exception& error) {
        failure = error.what();
    }
    try {
        word_->ScreenUpdating(true);
    } catch (const std::exception&) {
        // A word processor that failed the build is reported below; the screen is its own business.
    }
    if (failure.empty()) {
        MyMsgBox("Eingefügt", msgbox::Information, SlipTitle);
    } else {
        MyMsgBox(failure, msgbox::Stop, SlipTitle);
    }
}

} // namespace wordbm
