#include "engine/ooxml/VmlFallback.h"

#include "CanvasZip.h"
#include "PartXml.h"
#include "engine/ooxml/DrawingCanvas.h"
#include "engine/ooxml/DrawingColour.h"
#include "engine/ooxml/DrawingXml.h"
#include "engine/ooxml/ShapeFinder.h"
#include "engine/ooxml/VmlPath.h"
#include "engine/ooxml/VmlStyle.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace wordbm::ooxml {
namespace {

using canvastest::CanvasZip;
using canvastest::PartXml;
using drawingXml::path;

std::optional<std::string> vmlPath(const std::string& geometry) {
    const auto document =
        PartXml::parse(R"(<a:custGeom xmlns:a="a"><a:pathLst>)" + geometry + "</a:pathLst></a:custGeom>");
    return VmlPath::fromCustomGeometry(document->document_element(), 1000, 1000);
}

std::string wordDrawing(const std::string& inner) {
    return R"(<w:p xmlns:w="w" xmlns:wp="wp" xmlns:a="a" xmlns:wpc="wpc" xmlns:wps="wps" xmlns:wpg="wpg"><w:r><w:drawing>)"
           R"(<wp:inline><wp:extent cx="1270000" cy="635000"/><wp:docPr id="1" name="Leinwand"/><a:graphic><a:graphicData>)"
           R"(<wpc:wpc><wpc:bg/><wpc:whole/>)" +
           inner + "</wpc:wpc></a:graphicData></a:graphic></wp:inline></w:drawing></w:r></w:p>";
}

TEST(VmlPath, FreeformOutlineIsScaledOntoTheVmlGrid) {
    EXPECT_EQ(
        vmlPath(
            R"(<a:path w="100" h="50"><a:moveTo><a:pt x="0" y="0"/></a:moveTo><a:lnTo><a:pt x="100" y="0"/>)"
            R"(</a:lnTo><a:lnTo><a:pt x="50" y="50"/></a:lnTo><a:close/></a:path>)"),
        "m0,0l21600,0l10800,21600xe");
    // A path without a size of its own uses the shape's (here 1000 x 1000).
    EXPECT_EQ(
        vmlPath(
            R"(<a:path fill="none"><a:moveTo><a:pt x="500" y="0"/></a:moveTo>)"
            R"(<a:cubicBezTo><a:pt x="0" y="0"/><a:pt x="0" y="1000"/><a:pt x="500" y="1000"/></a:cubicBezTo></a:path>)"),
        "nfm10800,0c0,0,0,21600,10800,21600e");
}

TEST(VmlPath, CurvesWithoutAVmlTwinBecomeCubicCurves) {
    // Quarter circle from (100,50) about (50,50) to (50,100).
    const auto arc = vmlPath(R"(<a:path w="100" h="100"><a:moveTo><a:pt x="100" y="50"/></a:moveTo>)"
                             R"(<a:arcTo wR="50" hR="50" stAng="0" swAng="5400000"/></a:path>)");
    ASSERT_TRUE(arc);
    EXPECT_EQ(arc->substr(0, arc->find('c')), "m21600,10800");
    EXPECT_TRUE(arc->ends_with(",10800,21600e")) << *arc;
    const auto quadratic =
        vmlPath(R"(<a:path w="3" h="3"><a:moveTo><a:pt x="0" y="0"/></a:moveTo>)"
                R"(<a:quadBezTo><a:pt x="3" y="0"/><a:pt x="3" y="3"/></a:quadBezTo></a:path>)");
    EXPECT_EQ(quadratic, "m0,0c14400,0,21600,7200,21600,21600e");
}

TEST(VmlPath, GuideFormulasLeaveTheShapeARectangle) {
    EXPECT_FALSE(vmlPath(R"(<a:path w="10" h="10"><a:moveTo><a:pt x="T0" y="0"/></a:moveTo></a:path>)"));
    EXPECT_FALSE(vmlPath(""));
}

std::optional<std::string> colourOf(const std::string& fill) {
    const auto document = PartXml::parse(R"(<a:solidFill xmlns:a="a">)" + fill + "</a:solidFill>");
    return DrawingColour::of(document->document_element());
}

TEST(DrawingColour, ThemeColoursComeFromWordsDefaultThemeWithTheirChanges) {
    EXPECT_EQ(colourOf(R"(<a:srgbClr val="005747"/>)"), "#005747");
    EXPECT_EQ(colourOf(R"(<a:schemeClr val="accent1"/>)"), "#4472C4");
    EXPECT_EQ(colourOf(R"(<a:schemeClr val="accent1"><a:shade val="50000"/></a:schemeClr>)"), "#223962");
    // Word's "Blue, Accent 1, Lighter 40%".
    EXPECT_EQ(
        colourOf(
            R"(<a:schemeClr val="accent1"><a:lumMod val="60000"/><a:lumOff val="40000"/></a:schemeClr>)"),
        "#8FAADC");
    EXPECT_EQ(colourOf(R"(<a:prstClr val="black"/>)"), "#000000");
    EXPECT_FALSE(colourOf(R"(<a:schemeClr val="phClr"/>)"));
    EXPECT_FALSE(colourOf(R"(<a:srgbClr val="12"/>)"));
}

TEST(VmlFallback, WordCanvasesAreRebuiltItemForItem) {
    const auto header =
        PartXml::parse(CanvasZip::read(std::filesystem::path(WORDBM_CORPUS_DIR) / "docx" / "stress017.docx")
                           .at("word/header1.xml"));
    ASSERT_EQ(VmlFallback::regenerateCanvases(header->root()), 2U);
    for (const DrawingCanvas& canvas : ShapeFinder::canvases(header->root())) {
        const pugi::xml_node group =
            path(canvas.shape().alternateContent(), {"mc:Fallback", "w:pict", "v:group"});
        ASSERT_TRUE(group) << canvas.shape().name();
        EXPECT_EQ(group.attribute("id").value(), canvas.shape().name());
        EXPECT_EQ(group.attribute("editas").value(), std::string("canvas"));
        EXPECT_TRUE(group.child("w10:anchorlock"));
        EXPECT_FALSE(VmlStyle::parse(group.attribute("style").value()).has("position"));
        for (const ShapeXml& item : canvas.items()) {
            EXPECT_TRUE(group.find_child_by_attribute("id", item.name().c_str())) << item.name();
        }
    }
    const DrawingCanvas logo = ShapeFinder::canvases(header->root())[0];
    const pugi::xml_node freeform =
        path(logo.shape().alternateContent(), {"mc:Fallback", "w:pict", "v:group"})
            .find_child_by_attribute("id", "Freeform 8");
    EXPECT_STREQ(freeform.attribute("fillcolor").value(), "#005747");
    EXPECT_STREQ(freeform.attribute("stroked").value(), "f");
    EXPECT_TRUE(
        std::string_view(freeform.attribute("path").value()).starts_with("m10873,0l10873,0l11902,147"));

    const DrawingCanvas rule = ShapeFinder::canvases(header->root())[1];
    const pugi::xml_node line = path(rule.shape().alternateContent(), {"mc:Fallback", "w:pict", "v:group"})
                                    .find_child_by_attribute("id", "Line 5");
    EXPECT_STREQ(line.attribute("path").value(), "m,l21600,21600e");
    EXPECT_STREQ(line.attribute("strokecolor").value(), "#005846");
    EXPECT_EQ(VmlStyle::parse(line.attribute("style").value()).get("flip"), "y");
}

TEST(VmlFallback, ShapeOutsideACanvasIsPlacedLikeTheAnchor) {
    const auto header =
        PartXml::parse(CanvasZip::read(std::filesystem::path(WORDBM_CORPUS_DIR) / "docx" / "stress017.docx")
                           .at("word/header1.xml"));
    const ShapeXml box = ShapeFinder::shapes(header->root())[0];
    ASSERT_TRUE(VmlFallback::regenerate(box.alternateContent()));
    const pugi::xml_node vml = path(box.alternateContent(), {"mc:Fallback", "w:pict", "v:shape"});
    EXPECT_STREQ(vml.attribute("id").value(), "Text Box 55");
    const VmlStyle style = VmlStyle::parse(vml.attribute("style").value());
    EXPECT_EQ(style.get("margin-left"), "31.6pt");
    EXPECT_EQ(style.get("mso-position-horizontal-relative"), "text");
    EXPECT_STREQ(vml.attribute("filled").value(), "f");
    EXPECT_TRUE(path(vml, {"v:textbox", "w:txbxContent", "w:p"}));
    EXPECT_TRUE(vml.previous_sibling("v:shapetype"));
}

// Every drawing stored twice in the corpus (text boxes, groups, canvases, shapes) gets a fallback
// that names each of its items, and the part stays well-formed.
TEST(VmlFallback, EveryDrawingOfTheCorpusCanBeRebuilt) {
    std::size_t rebuilt = 0;
    for (const auto& file :
         std::filesystem::directory_iterator(std::filesystem::path(WORDBM_CORPUS_DIR) / "docx")) {
        if (file.path().extension() != ".docx" && file.path().extension() != ".docm") {
            continue;
        }
        const CanvasZip zip = CanvasZip::read(file.path());
        for (const std::string& name : zip.names()) {
            if (!name.starts_with("word/") || !name.ends_with(".xml")) {
                continue;
            }
            const auto part = PartXml::parse(zip.at(name));
            std::vector<pugi::xml_node> holders;
            drawingXml::forEachElement(part->root(), [&](pugi::xml_node node) {
                if (drawingXml::named(node, "mc:AlternateContent")) {
                    holders.push_back(node);
                }
                return drawingXml::named(node, "mc:Fallback") ? drawingXml::Visit::Skip
                                                              : drawingXml::Visit::Enter;
            });
            for (const pugi::xml_node holder : holders) {
                if (!VmlFallback::regenerate(holder)) {
                    continue;
                }
                ++rebuilt;
                const pugi::xml_node picture = path(holder, {"mc:Fallback", "w:pict"});
                const ShapeXml shape(path(holder, {"mc:Choice", "w:drawing"}).first_child());
                EXPECT_TRUE(picture.find_child_by_attribute("id", shape.name().c_str()))
                    << file.path().filename() << " " << shape.name();
            }
            EXPECT_TRUE(PartXml::parse(PartXml::text(*part))->document_element()) << name;
        }
    }
    EXPECT_GE(rebuilt, 40U);
}

TEST(VmlFallback, CanvasWithoutFallbackIsGivenOne) {
    const auto part =
        PartXml::parse(wordDrawing(R"(<wps:wsp><wps:cNvPr id="2" name="Kasten"/><wps:spPr><a:xfrm>)"
                                   R"(<a:off x="100" y="200"/><a:ext cx="300" cy="400"/></a:xfrm>)"
                                   R"(<a:prstGeom prst="ellipse"/></wps:spPr></wps:wsp>)"));
    ASSERT_EQ(VmlFallback::regenerateCanvases(part->root()), 1U);
    const pugi::xml_node holder = path(part->root(), {"w:p", "w:r", "mc:AlternateContent"});
    EXPECT_STREQ(path(holder, {"mc:Choice"}).attribute("Requires").value(), "wpc");
    EXPECT_TRUE(path(holder, {"mc:Choice", "w:drawing", "wp:inline"}));
    EXPECT_FALSE(path(part->root(), {"w:p", "w:r", "w:drawing"}));
    const pugi::xml_node oval = path(holder, {"mc:Fallback", "w:pict", "v:group", "v:oval"});
    EXPECT_STREQ(oval.attribute("id").value(), "Kasten");
    EXPECT_EQ(VmlStyle::parse(oval.attribute("style").value()).get("left"), "1");
}

TEST(VmlFallback, CopiedTextKeepsDeclarationsMadeInsideTheDrawing) {
    const auto part = PartXml::parse(wordDrawing(
        R"(<wps:wsp xmlns:w14="urn:w14"><wps:spPr/><wps:txbx><w:txbxContent><w:p w14:paraId="1"/></w:txbxContent>)"
        R"(</wps:txbx><wps:bodyPr/></wps:wsp>)"));
    VmlFallback::regenerateCanvases(part->root());
    const pugi::xml_node copy = drawingXml::firstDescendant(
        path(part->root(), {"w:p", "w:r", "mc:AlternateContent", "mc:Fallback"}), "w:txbxContent");
    ASSERT_TRUE(copy);
    EXPECT_STREQ(copy.attribute("xmlns:w14").value(), "urn:w14");
}

TEST(VmlFallback, LeavesAlternativesItCannotDrawAlone) {
    const auto part = PartXml::parse(
        R"(<w:r xmlns:w="w" xmlns:mc="mc"><mc:AlternateContent><mc:Choice Requires="w14">)"
        R"(<w:t>x</w:t></mc:Choice><mc:Fallback><w:t>y</w:t></mc:Fallback></mc:AlternateContent></w:r>)");
    const pugi::xml_node holder = part->root().first_child().first_child();
    EXPECT_FALSE(VmlFallback::regenerate(holder));
    EXPECT_STREQ(path(holder, {"mc:Fallback", "w:t"}).child_value(), "y");
}

TEST(VmlFallback, DeeplyNestedGroupsStopAtALimitInsteadOfTheStack) {
    std::string nested;
    for (int level = 0; level < 20000; ++level) {
        nested +=
            R"(<wpg:wgp><wpg:grpSpPr><a:xfrm><a:off x="0" y="0"/><a:ext cx="100" cy="100"/></a:xfrm></wpg:grpSpPr>)";
    }
    for (int level = 0; level < 20000; ++level) {
        nested += "</wpg:wgp>";
    }
    const auto part = PartXml::parse(wordDrawing(nested));
    ASSERT_EQ(VmlFallback::regenerateCanvases(part->root()), 1U);
    std::size_t groups = 0;
    drawingXml::forEachElement(part->root(), [&](pugi::xml_node node) {
        groups += drawingXml::named(node, "v:group") ? 1 : 0;
        return drawingXml::Visit::Enter;
    });
    EXPECT_GT(groups, 2U);
    EXPECT_LT(groups, 40U);
}

} // namespace
} // namespace wordbm::ooxml
