#include "TestForm.h"

#include "engine/ooxml/NewForm.h"
#include "engine/ooxml/Package.h"

#include <atomic>

namespace wordbm::testing {
namespace {

const std::string Namespaces =
    R"(xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main" )"
    R"(xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships" )"
    R"(xmlns:v="urn:schemas-microsoft-com:vml")";

std::string escaped(std::string_view text) {
    std::string xml;
    for (const char c : text) {
        switch (c) {
        case '&':
            xml += "&amp;";
            break;
        case '<':
            xml += "&lt;";
            break;
        case '>':
            xml += "&gt;";
            break;
        case '"':
            xml += "&quot;";
            break;
        default:
            xml += c;
        }
    }
    return xml;
}

std::string run(std::string_view text) {
    return R"(<w:r><w:t xml:space="preserve">)" + escaped(text) + "</w:t></w:r>";
}

// Word numbers bookmarks per document; unique over the process is unique enough.
int nextBookmarkId() {
    static std::atomic<int> id{0};
    return ++id;
}

} // namespace

TestForm& TestForm::append(const std::string& runXml) {
    open_ += runXml;
    return *this;
}

TestForm& TestForm::text(std::string_view text) {
    for (std::size_t end = text.find('\r'); end != std::string_view::npos; end = text.find('\r')) {
        open_ += run(text.substr(0, end));
        paragraphs_.push_back(std::move(open_));
        open_.clear();
        text.remove_prefix(end + 1);
    }
    return text.empty() ? *this : append(run(text));
}

TestForm& TestForm::field(const std::string& code, const std::string& result) {
    return append(R"(<w:fldSimple w:instr=")" + escaped(code) + R"(">)" + run(result) + "</w:fldSimple>");
}

TestForm& TestForm::mergeField(const std::string& name) {
    return field(" MERGEFIELD " + name + " ", "«" + name + "»");
}

TestForm& TestForm::bookmark(const std::string& name, std::string_view text) {
    const std::string id = std::to_string(nextBookmarkId());
    return append(R"(<w:bookmarkStart w:id=")" + id + R"(" w:name=")" + escaped(name) + R"("/>)" + run(text) +
                  R"(<w:bookmarkEnd w:id=")" + id + R"("/>)");
}

TestForm& TestForm::textBox(const std::string& name, const TestForm& content) {
    return append(R"(<w:r><w:pict><v:shape id=")" + escaped(name) +
                  R"(" type="#_x0000_t202" style="position:absolute;width:120pt;height:40pt">)"
                  "<v:textbox><w:txbxContent>" +
                  content.paragraphsXml() + "</w:txbxContent></v:textbox></v:shape></w:pict></w:r>");
}

TestForm& TestForm::header(const TestForm& content) {
    header_ = content.paragraphsXml();
    return *this;
}

TestForm& TestForm::sections(int count) {
    sections_ = count;
    return *this;
}

std::string TestForm::paragraphsXml() const {
    std::string xml;
    for (const std::string& paragraph : paragraphs_) {
        xml += "<w:p>" + paragraph + "</w:p>";
    }
    // A story ends with a paragraph mark: text ending in "\r" needs no empty paragraph after it.
    return !open_.empty() || paragraphs_.empty() ? xml + "<w:p>" + open_ + "</w:p>" : xml;
}

void TestForm::save(const std::string& path) const {
    ooxml::NewForm::create("", path);
    const auto package = ooxml::Package::open(path);
    const std::string page = R"(<w:pgSz w:w="11906" w:h="16838"/>)";
    std::string first = page;
    if (!header_.empty()) {
        package->setBytes("word/header1.xml", "<w:hdr " + Namespaces + ">" + header_ + "</w:hdr>",
                          "application/vnd.openxmlformats-officedocument.wordprocessingml.header+xml");
        const std::string id = package->addRelationship(
            "word/document.xml", "http://schemas.openxmlformats.org/officeDocument/2006/relationships/header",
            "header1.xml");
        first = R"(<w:headerReference w:type="default" r:id=")" + id + R"("/>)" + page;
    }
    // Every section but the last ends with a paragraph holding its properties.
    std::string body = paragraphsXml();
    for (int section = 1; section < sections_; ++section) {
        body += "<w:p><w:pPr><w:sectPr>" + (section == 1 ? first : page) + "</w:sectPr></w:pPr></w:p>";
    }
    const std::string& last = sections_ == 1 ? first : page;
    package->setBytes("word/document.xml",
                      "<w:document " + Namespaces + "><w:body>" + body + "<w:sectPr>" + last +
                          "</w:sectPr></w:body></w:document>",
                      "");
    package->save(path);
}

} // namespace wordbm::testing
