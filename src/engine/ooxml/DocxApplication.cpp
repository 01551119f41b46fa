#include "engine/ooxml/DocxApplication.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxDocuments.h"
#include "engine/ooxml/DocxSelection.h"
#include "engine/ooxml/Package.h"
#include "engine/word/AutomationError.h"
#include "engine/word/WordConstants.h"

#include <algorithm>
#include <filesystem>

namespace wordbm::ooxml {

std::shared_ptr<DocxApplication> DocxApplication::create() {
    return std::shared_ptr<DocxApplication>(new DocxApplication());
}

void DocxApplication::check() const {
    if (quit_) {
        throw AutomationError("Das Textverarbeitungsprogramm wurde beendet.");
    }
}

std::vector<std::shared_ptr<DocxDocument>> DocxApplication::open() const {
    check();
    std::vector<std::shared_ptr<DocxDocument>> documents;
    std::copy_if(documents_.begin(), documents_.end(), std::back_inserter(documents),
                 [](const auto& document) { return !document->closed(); });
    return documents;
}

std::shared_ptr<DocxDocument> DocxApplication::open(const std::string& fileName) {
    check();
    std::error_code error;
    const auto wanted = std::filesystem::absolute(fileName, error).lexically_normal().string();
    for (const auto& document : open()) {
        if (document->FullName() == wanted) {
            // Opening it again makes it the active document, as in Word.
            std::erase(documents_, document);
            documents_.push_back(document);
            return document;
        }
    }
    auto document = openFromDisk(fileName, wanted);
    std::erase_if(documents_, [](const auto& known) { return known->closed(); });
    documents_.push_back(document);
    return document;
}

std::shared_ptr<DocxDocument> DocxApplication::openFromDisk(const std::string& fileName,
                                                            const std::string& path) {
    std::error_code error;
    const auto written = std::filesystem::last_write_time(path, error);
    const auto size = error ? 0 : std::filesystem::file_size(path, error);
    if (error) {
        return DocxDocument::open(fileName); // reports the missing or unreadable file
    }
    for (const auto& kept : kept_) {
        if (kept.path == path && kept.written == written && kept.size == size) {
            return DocxDocument::open(path, kept.package->clone());
        }
    }
    auto package = Package::open(fileName);
    auto copy = std::shared_ptr<const Package>(package->clone());
    auto document = DocxDocument::open(fileName, std::move(package));
    std::erase_if(kept_, [&path](const KeptParse& kept) { return kept.path == path; });
    constexpr std::size_t KeptFiles = 4;
    if (kept_.size() >= KeptFiles) {
        kept_.erase(kept_.begin());
    }
    kept_.push_back({path, written, size, std::move(copy)});
    return document;
}

std::shared_ptr<DocxDocument> DocxApplication::active() const {
    const auto documents = open();
    if (documents.empty()) {
        throw AutomationError("Dieser Befehl ist nicht verfügbar, weil kein Dokument geöffnet ist.");
    }
    return documents.back();
}

word::DocumentsPtr DocxApplication::Documents() {
    check();
    return std::make_shared<DocxDocuments>(shared_from_this());
}

word::DocumentPtr DocxApplication::ActiveDocument() {
    return active();
}

word::SelectionPtr DocxApplication::Selection() {
    return std::make_shared<DocxSelection>(active());
}

bool DocxApplication::Visible() const {
    check();
    return visible_;
}

void DocxApplication::Visible(bool visible) {
    check();
    visible_ = visible;
}

bool DocxApplication::ScreenUpdating() const {
    check();
    return screenUpdating_;
}

void DocxApplication::ScreenUpdating(bool updating) {
    check();
    screenUpdating_ = updating;
}

void DocxApplication::Quit(std::optional<int> saveChanges) {
    check();
    for (const auto& document : open()) {
        // Without an answer there is nobody to ask: unsaved changes are dropped.
        document->Close(saveChanges == word::wd::wdSaveChanges ? saveChanges : word::wd::wdDoNotSaveChanges);
    }
    documents_.clear();
    quit_ = true;
}

} // namespace wordbm::ooxml
