// The saved invoice as the two readers see it: Word reads the canvases' DrawingML, LibreOffice the
// VML fallback rebuilt from it.
#include "SlipFixture.h"
#include "engine/ooxml/Package.h"
#include "engine/word/Document.h"

#include <pugixml.hpp>
#include <string_view>

namespace wordbm::slip::test {
namespace {

// The nodes of the saved main part that `xpath` selects.
std::vector<pugi::xml_node> select(const pugi::xml_document& part, const char* xpath) {
    std::vector<pugi::xml_node> found;
    for (const pugi::xpath_node& hit : part.select_nodes(xpath)) {
        found.push_back(hit.node());
    }
    return found;
}

class SlipSaved : public SlipTest {
protected:
    void SetUp() override {
        open("Empty.docx");
        build();
        fill(Normal);
        const std::string saved = folder.path() + "/Rechnung-24100.docx";
        doc->SaveAs2(saved);
        const auto package = ooxml::Package::open(saved);
        const std::string xml = package->bytes("word/document.xml");
        ASSERT_TRUE(part.load_buffer(xml.data(), xml.size()));
    }

    pugi::xml_document part;
};

TEST_F(SlipSaved, WordFindsTheNamedCanvasesWithTheCodeInTheQRBoxAt46Millimetres) {
    const auto names = select(part, "//mc:Choice//wp:anchor/wp:docPr/@name/..");
    std::vector<std::string> canvases;
    for (const pugi::xml_node name : names) {
        canvases.emplace_back(name.attribute("name").value());
    }
    EXPECT_EQ(canvases, (std::vector<std::string>{"kdx6_ESQRMakeST", "kdx6_ESQRMakeET", "kdx6_ESQRMakeZT"}));
    const auto codes = select(part, "//mc:Choice//wps:txbx//wp:inline/wp:extent");
    ASSERT_EQ(codes.size(), 1U);
    EXPECT_EQ(std::string_view(codes[0].attribute("cx").value()), "1656000");
    EXPECT_EQ(std::string_view(codes[0].attribute("cy").value()), "1656000");
}

TEST_F(SlipSaved, LibreOfficeGetsTheCodeBesideItsBoxWhereWordLaysItOut) {
    EXPECT_EQ(select(part, "//mc:Fallback//v:group[@editas='canvas']").size(), 3U);
    EXPECT_TRUE(select(part, "//mc:Fallback//v:textbox//w:drawing").empty())
        << "a picture in a grouped text box is stretched over the box";
    const auto pictures = select(part, "//mc:Fallback//v:shape[@type='#_x0000_t75'][v:imagedata]");
    ASSERT_EQ(pictures.size(), 1U);
    // Group units are 1/360 mm: the QR box 1 mm up and left of 5/17 mm, plus 0.1 in and 0.05 in.
    EXPECT_EQ(std::string(pictures[0].attribute("style").value()),
              "position:absolute;left:2354;top:6217;width:16560;height:16560");
}

} // namespace
} // namespace wordbm::slip::test
