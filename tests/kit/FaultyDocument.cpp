#include "FaultyDocument.h"

#include "FaultyApplication.h"

namespace wordbm::testing {

const word::Document& FaultyDocument::real() const {
    application_->check();
    return *real_;
}

word::Document& FaultyDocument::real() {
    application_->check();
    return *real_;
}

std::string FaultyDocument::Name() const {
    return real().Name();
}

std::string FaultyDocument::FullName() const {
    return real().FullName();
}

std::string FaultyDocument::Path() const {
    return real().Path();
}

bool FaultyDocument::Saved() const {
    return real().Saved();
}

word::BookmarksPtr FaultyDocument::Bookmarks() {
    return real().Bookmarks();
}

word::FieldsPtr FaultyDocument::Fields() {
    return real().Fields();
}

word::ShapesPtr FaultyDocument::Shapes() {
    return real().Shapes();
}

word::SectionsPtr FaultyDocument::Sections() {
    return real().Sections();
}

word::RangePtr FaultyDocument::Content() {
    return real().Content();
}

word::RangePtr FaultyDocument::Range(std::optional<long> start, std::optional<long> end) {
    return real().Range(start, end);
}

word::MailMergePtr FaultyDocument::MailMerge() {
    return real().MailMerge();
}

void FaultyDocument::Select() {
    real().Select();
}

void FaultyDocument::Save() {
    real().Save();
    ++application_->saves;
}

void FaultyDocument::SaveAs2(const std::string& fileName) {
    application_->refuse("SaveAs2");
    real().SaveAs2(fileName);
}

void FaultyDocument::SaveCopyAs(const std::string& fileName) {
    real().SaveCopyAs(fileName);
}

void FaultyDocument::Close(std::optional<int> saveChanges) {
    real().Close(saveChanges);
    ++application_->closes;
}

void FaultyDocument::ExportAsFixedFormat(const std::string& outputFileName, int exportFormat,
                                         bool useISO19005_1) {
    application_->refuse("ExportAsFixedFormat");
    real().ExportAsFixedFormat(outputFileName, exportFormat, useISO19005_1);
}

void FaultyDocument::PrintOut() {
    application_->refuse("PrintOut");
    real().PrintOut();
}

} // namespace wordbm::testing
