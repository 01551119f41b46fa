#pragma once

#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/TemporaryFolder.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Fields.h"
#include "engine/word/Range.h"
#include "engine/word/Sections.h"
#include "engine/word/Selection.h"
#include "engine/word/Shapes.h"

#include <string>
#include <vector>

namespace wordbm::ooxml::test {

// A corpus document opened through the object model, as the engine opens a form, with a private
// folder to save into.
class WordSession {
public:
    explicit WordSession(const std::string& corpusName);

    word::Application& app() { return *app_; }
    word::DocumentPtr document() { return document_; }
    word::SelectionPtr selection() { return app_->Selection(); }
    const std::string& originalPath() const { return original_; }
    // Saves with SaveAs2 into the private folder under the original name; returns the path.
    std::string saveCopy();

    // The engine's bookmark insertion: type "[field]", select it backwards, add the bookmark, step behind it.
    void insertBookmark(const std::string& field, const std::string& name);
    // Every MERGEFIELD of a field collection, in order.
    static std::vector<word::FieldPtr> mergeFields(const word::FieldsPtr& fields);
    // The merge field's name: the word after MERGEFIELD, without quotes.
    static std::string mergeFieldName(const word::FieldPtr& field);

private:
    std::shared_ptr<DocxApplication> app_;
    TemporaryFolder folder_;
    std::string name_;
    std::string original_;
    word::DocumentPtr document_;
};

} // namespace wordbm::ooxml::test
