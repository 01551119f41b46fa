#pragma once

#include "engine/word/Forward.h"

#include <optional>
#include <string>

namespace wordbm::word {

class Document {
public:
    virtual ~Document() = default;

    virtual std::string Name() const = 0;     // file name with extension
    virtual std::string FullName() const = 0; // path and name
    virtual std::string Path() const = 0;     // folder, without trailing separator
    virtual bool Saved() const = 0;           // false after an edit until the next save

    virtual BookmarksPtr Bookmarks() = 0; // every story, alphabetical
    virtual FieldsPtr Fields() = 0;       // main story only
    virtual ShapesPtr Shapes() = 0;       // shapes anchored in the main story
    virtual SectionsPtr Sections() = 0;
    virtual RangePtr Content() = 0; // the whole main story
    virtual RangePtr Range(std::optional<long> start = std::nullopt,
                           std::optional<long> end = std::nullopt) = 0;
    virtual MailMergePtr MailMerge() = 0;

    virtual void Select() = 0;
    // Both write the whole package atomically; SaveAs2 makes the new file this document's file.
    virtual void Save() = 0;
    virtual void SaveAs2(const std::string& fileName) = 0;
    // Writes the current state to another file, as Office's SaveCopyAs: the document keeps its own
    // file and its saved state.
    virtual void SaveCopyAs(const std::string& fileName) = 0;
    virtual void Close(std::optional<int> saveChanges = std::nullopt) = 0;

    // wdExportFormatPDF (17); with useISO19005_1 a PDF/A-1 file. Written atomically.
    virtual void ExportAsFixedFormat(const std::string& outputFileName, int exportFormat,
                                     bool useISO19005_1 = false) = 0;
    // Prints the document's current state on the default (or configured) printer.
    virtual void PrintOut() = 0;
};

} // namespace wordbm::word
