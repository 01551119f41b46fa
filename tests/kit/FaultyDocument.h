#pragma once

#include "engine/word/Document.h"

#include <memory>

namespace wordbm::testing {

class FaultyApplication;

// A real document that fails when its application crashed or refuses the member called.
class FaultyDocument final : public word::Document {
public:
    FaultyDocument(std::shared_ptr<FaultyApplication> application, word::DocumentPtr real)
        : application_(std::move(application)), real_(std::move(real)) {}

    std::string Name() const override;
    std::string FullName() const override;
    std::string Path() const override;
    bool Saved() const override;
    word::BookmarksPtr Bookmarks() override;
    word::FieldsPtr Fields() override;
    word::ShapesPtr Shapes() override;
    word::SectionsPtr Sections() override;
    word::RangePtr Content() override;
    word::RangePtr Range(std::optional<long> start = std::nullopt,
                         std::optional<long> end = std::nullopt) override;
    word::MailMergePtr MailMerge() override;
    void Select() override;
    void Save() override;
    void SaveAs2(const std::string& fileName) override;
    void SaveCopyAs(const std::string& fileName) override;
    void Close(std::optional<int> saveChanges = std::nullopt) override;
    void ExportAsFixedFormat(const std::string& outputFileName, int exportFormat,
                             bool useISO19005_1 = false) override;
    void PrintOut() override;

private:
    const word::Document& real() const;
    word::Document& real();

    std::shared_ptr<FaultyApplication> application_;
    word::DocumentPtr real_;
};

} // namespace wordbm::testing
