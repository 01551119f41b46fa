#pragma once

#include <string>
#include <string_view>

namespace wordbm::ooxml {

// Strict Open XML names the same elements as the transitional form under other namespaces
// (http://purl.oclc.org/ooxml/...) and other relationship types. Word opens both and writes its
// documents transitional; the package reads a Strict document by renaming its namespaces as it
// loads, so everything after sees, and every save writes, the transitional form.
class StrictOpenXml {
public:
    // True when the text names any Strict namespace or relationship type.
    static bool mentions(std::string_view xml);
    // The XML text with every Strict namespace and relationship type replaced by its transitional
    // twin, and the root's conformance="strict" dropped.
    static std::string transitional(std::string_view xml);
    // The transitional twin of one Strict URI ("http://purl.oclc.org/ooxml/wordprocessingml/main"
    // gives "http://schemas.openxmlformats.org/wordprocessingml/2006/main"); others come back as they are.
    static std::string transitionalUri(std::string_view uri);
};

} // namespace wordbm::ooxml
