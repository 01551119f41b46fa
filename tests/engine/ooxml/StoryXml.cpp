#include "StoryXml.h"

#include <sstream>
#include <stdexcept>

namespace wordbm::ooxml::test {

StoryXml::StoryXml(std::string_view bodyContent) {
    const std::string xml =
        "<w:document xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\" "
        "xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\"><w:body>" +
        std::string(bodyContent) + "</w:body></w:document>";
    if (!document_.load_string(xml.c_str(), pugi::parse_default | pugi::parse_ws_pcdata)) {
        throw std::invalid_argument("test XML is not well-formed");
    }
    story_ = std::make_unique<Story>(StoryKind::Main, "main", "word/document.xml", body());
}

std::string StoryXml::xml() const {
    std::string out;
    for (auto child = body().first_child(); child; child = child.next_sibling()) {
        out += rawXml(child);
    }
    return out;
}

std::string rawXml(pugi::xml_node node) {
    std::ostringstream out;
    node.print(out, "", pugi::format_raw);
    return out.str();
}

} // namespace wordbm::ooxml::test
