// The saved invoice as its two readers see it: Word reads the canvases' DrawingML, LibreOffice the
// VML fallback rebuilt from it.
#include "SlipFixture.h"
#include "engine/ooxml/Package.h"
#include "engine/word/Document.h"

#include <pugixml.hpp>

namespace wordbm::slip::test {
namespace {

TEST_F(SlipTest, SavedInvoicesKeepTheCodeInTheDrawingMLBoxAndDrawItBesideTheFallbackBox) {
    open("Empty.docx");
    build();
    fill(Normal);
    doc->SaveAs2(folder.path() + "/Rechnung-24100.docx");
    const std::string xml =
        ooxml::Package::open(folder.path() + "/Rechnung-24100.docx")->bytes("word/document.xml");
    pugi::xml_document part;
    ASSERT_TRUE(part.load_buffer(xml.data(), xml.size()));
    const auto count = [&part](const char* xpath) { return part.select_nodes(xpath).size(); };

    EXPECT_EQ(count("//mc:Choice//wp:docPr[starts-with(@name,'kdx6_ESQRMake')]"), 3U);
    EXPECT_EQ(count("//mc:Choice//wps:txbx//wp:inline/wp:extent[@cx='1656000'][@cy='1656000']"), 1U)
        << "46 mm";
    EXPECT_EQ(count("//mc:Fallback//v:group[@editas='canvas']"), 3U);
    EXPECT_EQ(count("//mc:Fallback//v:textbox//w:drawing"), 0U);
    // Group units are 1/360 mm: the QR box 1 mm up and left of 5/17 mm, plus 0.1 in and 0.05 in margins.
    EXPECT_EQ(count("//mc:Fallback//v:shape[@type='#_x0000_t75'][v:imagedata]"
                    "[@style='position:absolute;left:2354;top:6217;width:16560;height:16560']"),
              1U);
}

} // namespace
} // namespace wordbm::slip::test
