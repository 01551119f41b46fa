#include "FaultyApplication.h"

#include "FaultyDocument.h"
#include "FaultyDocuments.h"
#include "FaultyWord.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/WordConstants.h"

namespace wordbm::testing {

word::DocumentsPtr FaultyApplication::Documents() {
    check();
    return std::make_shared<FaultyDocuments>(shared_from_this(), real_->Documents());
}

word::DocumentPtr FaultyApplication::ActiveDocument() {
    check();
    return wrap(real_->ActiveDocument());
}

word::SelectionPtr FaultyApplication::Selection() {
    check();
    return real_->Selection();
}

bool FaultyApplication::Visible() const {
    check();
    return real_->Visible();
}

void FaultyApplication::Visible(bool visible) {
    check();
    real_->Visible(visible);
}

bool FaultyApplication::ScreenUpdating() const {
    check();
    return real_->ScreenUpdating();
}

void FaultyApplication::ScreenUpdating(bool updating) {
    check();
    real_->ScreenUpdating(updating);
}

void FaultyApplication::Quit(std::optional<int> saveChanges) {
    check();
    quits.push_back(saveChanges);
    real_->Quit(saveChanges);
}

// The real instance goes too, so that objects handed out before fail as well.
void FaultyApplication::crash() {
    if (!crashed_) {
        crashed_ = true;
        real_->Quit(word::wd::wdDoNotSaveChanges);
    }
}

void FaultyApplication::closeByHand() {
    const word::DocumentsPtr documents = real_->Documents();
    while (documents->Count() > 0) {
        documents->Item(1)->Close(word::wd::wdDoNotSaveChanges);
    }
}

void FaultyApplication::check() const {
    if (crashed_) {
        throw AutomationError("Der Remoteprozeduraufruf ist fehlgeschlagen.");
    }
}

void FaultyApplication::refuse(const std::string& member) const {
    check();
    if (refused_.contains(member)) {
        throw AutomationError(FaultyWord::Refusal);
    }
}

word::DocumentPtr FaultyApplication::wrap(word::DocumentPtr real) {
    return std::make_shared<FaultyDocument>(shared_from_this(), std::move(real));
}

} // namespace wordbm::testing
