#include "WordSession.h"

#include "CorpusFiles.h"
#include "engine/word/TextLength.h"

#include <sstream>

namespace wordbm::ooxml::test {

WordSession::WordSession(const std::string& corpusName)
    : app_(DocxApplication::create()), name_(corpusName), original_(corpusPath(corpusName)),
      document_(app_->Documents()->Open(original_)) {}

std::string WordSession::saveCopy() {
    const auto path = folder_.path() + "/" + name_;
    document_->SaveAs2(path);
    return path;
}

void WordSession::insertBookmark(const std::string& field, const std::string& name) {
    const auto display = "[" + field + "]";
    auto cursor = selection();
    cursor->TypeText(display);
    cursor->MoveLeft(word::wd::wdCharacter, static_cast<int>(word::TextLength(display)), word::wd::wdExtend);
    app_->ActiveDocument()->Bookmarks()->Add(name, cursor->Range());
    cursor->MoveRight();
}

std::vector<word::FieldPtr> WordSession::mergeFields(const word::FieldsPtr& fields) {
    std::vector<word::FieldPtr> found;
    for (int i = 1; i <= fields->Count(); ++i) {
        auto field = fields->Item(i);
        std::istringstream code(field->Code()->Text());
        std::string first;
        code >> first;
        if (first == "MERGEFIELD") {
            found.push_back(field);
        }
    }
    return found;
}

std::string WordSession::mergeFieldName(const word::FieldPtr& field) {
    std::istringstream code(field->Code()->Text());
    std::string keyword;
    std::string name;
    code >> keyword >> std::ws;
    if (code.peek() == '"') {
        code.get();
        std::getline(code, name, '"');
    } else {
        code >> name;
    }
    return name;
}

} // namespace wordbm::ooxml::test
