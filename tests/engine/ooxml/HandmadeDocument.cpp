#include "HandmadeDocument.h"

#include "HandmadeZip.h"

#include <fstream>

namespace wordbm::ooxml::test {

std::string handmadeDocument(const std::string& folder, const std::string& bodyXml,
                             const std::string& fileName) {
    const std::string xml =
        "<w:document xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\" "
        "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><w:body>" +
        bodyXml + "</w:body></w:document>";
    const auto path = folder + "/" + fileName;
    std::ofstream(path, std::ios::binary) << HandmadeZip::wordDocument(xml).bytes();
    return path;
}

} // namespace wordbm::ooxml::test
