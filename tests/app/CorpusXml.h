#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace wordbm::testing {

// A .docx read straight from its zip with pugixml, beside the program's own reading, so tests can
// compare the program with the XML. Only the parts the tests look at are loaded.
class CorpusXml {
public:
    explicit CorpusXml(const std::filesystem::path& docx);

    bool loaded() const { return !parts_.empty(); }
    // The root element of a part such as "word/document.xml"; empty when the part is missing.
    pugi::xml_node root(const std::string& part) const;
    std::vector<std::string> partNames() const;
    // The part a relationship of the main document points to ("word/header1.xml").
    std::string documentTarget(const std::string& id) const;

    // Writes a copy of the package with the named parts replaced by their current trees.
    void saveCopy(const std::filesystem::path& target, const std::vector<std::string>& changedParts) const;

    // What is wrong with a package as Word would read it: XML parts (.xml, .rels) that do not
    // parse, internal relationship targets that are missing. Empty when all is well.
    static std::vector<std::string> packageFaults(const std::filesystem::path& docx);

    // True when the corpus manifest lists the document as Strict Open XML.
    static bool isStrict(const std::filesystem::path& docx);

private:
    std::filesystem::path source_;
    std::map<std::string, std::unique_ptr<pugi::xml_document>> parts_;
};

// One field of a story: its instruction text and the XML that holds it (w:fldSimple, or the
// w:instrText nodes of a complex field).
struct XmlField {
    std::string code;
    pugi::xml_node simple;
    std::vector<pugi::xml_node> instructions;
    // Inside another field or holding one.
    bool nested = false;
};

// The fields under scope in document order of their ends, nested ones included, tracked deletions
// not. Drawings stored twice are read once (the mc:Fallback copy is passed over); with
// ownStoryOnly the text of text boxes, which are stories of their own, is passed over too.
std::vector<XmlField> fieldsIn(pugi::xml_node scope, bool ownStoryOnly);

// Calls enter for every element under scope in document order, except inside mc:Fallback (the
// second copy of a drawing stored twice); enter returns false to pass over an element's children.
void forEachElement(pugi::xml_node scope, const std::function<bool(pugi::xml_node)>& enter);

bool named(pugi::xml_node node, const char* name);

// Names of the bookmarks that start under scope, Fallback copies passed over.
std::vector<std::string> bookmarksIn(pugi::xml_node scope);

bool isMergeCode(std::string code);

} // namespace wordbm::testing
