#include "PartXml.h"

#include <gtest/gtest.h>
#include <sstream>

namespace wordbm::ooxml::canvastest {

std::unique_ptr<pugi::xml_document> PartXml::parse(const std::string& text) {
    auto document = std::make_unique<pugi::xml_document>();
    const auto result = document->load_buffer(
        text.data(), text.size(), pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_declaration);
    EXPECT_TRUE(result) << result.description() << " at " << result.offset;
    return document;
}

std::string PartXml::text(const pugi::xml_document& document) {
    std::ostringstream out;
    document.save(out, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return out.str();
}

pugi::xml_node PartXml::root(const pugi::xml_document& document) {
    return document.document_element();
}

} // namespace wordbm::ooxml::canvastest
