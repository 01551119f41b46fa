#pragma once

#include "engine/word/Application.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace wordbm::ooxml {

class DocxDocument;
class Package;

// The embedded word processor: an application instance without a window. After Quit every call
// throws, as calls to a word processor that has gone away fail.
class DocxApplication final : public word::Application, public std::enable_shared_from_this<DocxApplication> {
public:
    static std::shared_ptr<DocxApplication> create();

    word::DocumentsPtr Documents() override;
    word::DocumentPtr ActiveDocument() override;
    word::SelectionPtr Selection() override;
    bool Visible() const override;
    void Visible(bool visible) override;
    bool ScreenUpdating() const override;
    void ScreenUpdating(bool updating) override;
    void Quit(std::optional<int> saveChanges = std::nullopt) override;

    // For Documents: the same file opened again is the document already open.
    std::shared_ptr<DocxDocument> open(const std::string& fileName);
    std::vector<std::shared_ptr<DocxDocument>> open() const;
    void check() const;

private:
    // The parse of a file opened before, with the file's time and size when it was read.
    struct KeptParse {
        std::string path;
        std::filesystem::file_time_type written;
        std::uintmax_t size = 0;
        std::shared_ptr<const Package> package;
    };

    DocxApplication() = default;
    std::shared_ptr<DocxDocument> active() const;
    std::shared_ptr<DocxDocument> openFromDisk(const std::string& fileName, const std::string& path);

    std::vector<std::shared_ptr<DocxDocument>> documents_;
    // A merge reopens its working form for every invoice: an unchanged file is reopened from a
    // copy of its kept parse instead of being read and checked again.
    std::vector<KeptParse> kept_;
    bool visible_ = false;
    bool screenUpdating_ = true;
    bool quit_ = false;
};

} // namespace wordbm::ooxml
