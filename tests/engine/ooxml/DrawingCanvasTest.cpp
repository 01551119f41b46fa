#include "engine/ooxml/DrawingCanvas.h"

#include "PartXml.h"
#include "engine/ooxml/DrawingXml.h"
#include "engine/ooxml/ShapeFinder.h"
#include "engine/ooxml/VmlFallback.h"
#include "engine/ooxml/VmlStyle.h"
#include "engine/word/AutomationError.h"

#include <gtest/gtest.h>

namespace wordbm::ooxml {
namespace {

using canvastest::PartXml;
using drawingXml::path;

constexpr const char* Form =
    R"(<w:document xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main" )"
    R"(xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">)"
    R"(<w:body><w:p><w:r><w:t>Anker</w:t></w:r></w:p></w:body></w:document>)";

constexpr double EmuPerMm = 36000.0;

float mm(float millimetres) {
    return millimetres / 10.0F * 72.0F / 2.54F;
}

double number(pugi::xml_node node) {
    return static_cast<double>(drawingXml::integer(std::string_view(node.child_value())));
}

double number(pugi::xml_node node, const char* attribute) {
    return static_cast<double>(drawingXml::integer(node, attribute));
}

class DrawingCanvasXml : public ::testing::Test {
protected:
    void SetUp() override {
        document_ = PartXml::parse(Form);
        canvas_ =
            DrawingCanvas::create(paragraph(), {mm(62), mm(191), mm(148), mm(105)}, 3, "kdx6_ESQRMakeZT");
    }

    pugi::xml_node paragraph() const { return PartXml::root(*document_).child("w:body").child("w:p"); }
    pugi::xml_node fallbackGroup() const {
        return path(canvas_.shape().alternateContent(), {"mc:Fallback", "w:pict", "v:group"});
    }
    pugi::xml_node fallbackShape(const std::string& id) const {
        return fallbackGroup().find_child_by_attribute("id", id.c_str());
    }

    std::unique_ptr<pugi::xml_document> document_;
    DrawingCanvas canvas_;
};

TEST_F(DrawingCanvasXml, IsAnchoredToThePageInEmuAndStoredTwice) {
    const pugi::xml_node anchor = canvas_.shape().node();
    ASSERT_STREQ(anchor.name(), "wp:anchor");
    EXPECT_STREQ(path(canvas_.shape().alternateContent(), {"mc:Choice"}).attribute("Requires").value(),
                 "wpc");
    EXPECT_NEAR(number(path(anchor, {"wp:positionH", "wp:posOffset"})), 62 * EmuPerMm, 3);
    EXPECT_NEAR(number(path(anchor, {"wp:positionV", "wp:posOffset"})), 191 * EmuPerMm, 3);
    EXPECT_NEAR(number(anchor.child("wp:extent"), "cx"), 148 * EmuPerMm, 3);
    EXPECT_NEAR(number(anchor.child("wp:extent"), "cy"), 105 * EmuPerMm, 3);
    EXPECT_TRUE(anchor.child("wp:wrapNone"));
    EXPECT_STREQ(anchor.child("wp:docPr").attribute("id").value(), "3");

    EXPECT_EQ(canvas_.shape().type(), 20);
    EXPECT_EQ(canvas_.shape().name(), "kdx6_ESQRMakeZT");
    EXPECT_EQ(canvas_.shape().horizontalRelativeTo(), "page");
    EXPECT_EQ(canvas_.shape().verticalRelativeTo(), "page");
    EXPECT_FLOAT_EQ(canvas_.shape().geometry().left, mm(62));
    EXPECT_FLOAT_EQ(canvas_.shape().geometry().height, mm(105));
    EXPECT_STREQ(paragraph().first_child().child("w:t").child_value(), "Anker");
}

TEST_F(DrawingCanvasXml, FallbackIsAVmlCanvasAtTheSamePlace) {
    const pugi::xml_node group = fallbackGroup();
    ASSERT_TRUE(group);
    EXPECT_STREQ(group.attribute("editas").value(), "canvas");
    EXPECT_STREQ(group.attribute("id").value(), "kdx6_ESQRMakeZT");
    const VmlStyle style = VmlStyle::parse(group.attribute("style").value());
    EXPECT_EQ(style.get("position"), "absolute");
    EXPECT_NEAR(VmlStyle::points(style.get("margin-left")).value_or(0), mm(62), 0.001);
    EXPECT_NEAR(VmlStyle::points(style.get("margin-top")).value_or(0), mm(191), 0.001);
    EXPECT_NEAR(VmlStyle::points(style.get("width")).value_or(0), mm(148), 0.001);
    EXPECT_EQ(style.get("mso-position-horizontal-relative"), "page");
    EXPECT_EQ(style.get("mso-position-vertical-relative"), "page");
    EXPECT_STREQ(group.attribute("coordsize").value(), "53280,37800");
    EXPECT_STREQ(group.child("w10:wrap").attribute("anchory").value(), "page");
}

TEST_F(DrawingCanvasXml, BringsTheDrawingNamespacesAlong) {
    const pugi::xml_node root = PartXml::root(*document_);
    EXPECT_STREQ(root.attribute("xmlns:wpc").value(),
                 "http://schemas.microsoft.com/office/word/2010/wordprocessingCanvas");
    EXPECT_STREQ(root.attribute("xmlns:v").value(), "urn:schemas-microsoft-com:vml");
    EXPECT_STREQ(root.attribute("xmlns:mc").value(),
                 "http://schemas.openxmlformats.org/markup-compatibility/2006");

    // A part that uses a prefix for something else keeps it; the drawing declares its own.
    const auto other =
        PartXml::parse(R"(<w:hdr xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main" )"
                       R"(xmlns:v="urn:example:other"><w:p/></w:hdr>)");
    const DrawingCanvas canvas =
        DrawingCanvas::create(PartXml::root(*other).child("w:p"), {0, 0, 10, 10}, 1, "C");
    EXPECT_STREQ(PartXml::root(*other).attribute("xmlns:v").value(), "urn:example:other");
    EXPECT_STREQ(canvas.shape().alternateContent().attribute("xmlns:v").value(),
                 "urn:schemas-microsoft-com:vml");
}

TEST_F(DrawingCanvasXml, TextBoxHasWordDefaultsAndAParagraphToFill) {
    const ShapeXml box = canvas_.addTextbox(1, {mm(4), mm(4), mm(51), mm(7)}, 4, "Titel");
    EXPECT_EQ(box.type(), 17);
    EXPECT_EQ(box.name(), "Titel");
    EXPECT_FLOAT_EQ(box.geometry().left, mm(4));
    EXPECT_FLOAT_EQ(box.geometry().width, mm(51));
    EXPECT_TRUE(box.lineVisible());
    EXPECT_FALSE(box.hasText());
    ASSERT_TRUE(box.textContent().child("w:p"));
    EXPECT_EQ(canvas_.items(), std::vector<ShapeXml>{box});

    const pugi::xml_node vml = fallbackShape("Titel");
    EXPECT_STREQ(vml.attribute("type").value(), "#_x0000_t202");
    EXPECT_STREQ(vml.child("v:textbox").attribute("inset").value(), "7.2pt,3.6pt,7.2pt,3.6pt");
    EXPECT_TRUE(path(vml, {"v:textbox", "w:txbxContent", "w:p"}));
    EXPECT_TRUE(fallbackGroup().find_child_by_attribute("v:shapetype", "id", "_x0000_t202"));
    const VmlStyle style = VmlStyle::parse(vml.attribute("style").value());
    EXPECT_EQ(style.get("left"), "1440");
    EXPECT_EQ(style.get("width"), "18360");

    const ShapeXml upward = canvas_.addTextbox(2, {0, 0, 10, 10}, 5, "Hoch");
    EXPECT_STREQ(path(upward.content(), {"wps:bodyPr"}).attribute("vert").value(), "vert270");
    EXPECT_STREQ(fallbackShape("Hoch").child("v:textbox").attribute("style").value(),
                 "layout-flow:vertical;mso-layout-flow-alt:bottom-to-top");
}

TEST_F(DrawingCanvasXml, EditedTextReachesTheFallbackWhenRegenerated) {
    const ShapeXml box = canvas_.addTextbox(1, {0, 0, 100, 20}, 4, "Titel");
    box.textContent().child("w:p").append_child("w:r").append_child("w:t").text().set("Zahlteil");
    EXPECT_TRUE(box.hasText());
    EXPECT_FALSE(drawingXml::firstDescendant(fallbackShape("Titel"), "w:t"));

    VmlFallback::regenerateAround(box.textContent().first_child());
    EXPECT_STREQ(drawingXml::firstDescendant(fallbackShape("Titel"), "w:t").child_value(), "Zahlteil");
    // The Choice keeps the only editable copy.
    EXPECT_EQ(canvas_.items().front().textContent(), box.textContent());
}

TEST_F(DrawingCanvasXml, PictureRefersToItsImageInBothForms) {
    const ShapeXml picture = canvas_.addPicture("rId9", {mm(4), mm(16), mm(46), mm(46)}, 4, "QRCode");
    EXPECT_EQ(picture.type(), 13);
    EXPECT_STREQ(path(picture.content(), {"pic:blipFill", "a:blip"}).attribute("r:embed").value(), "rId9");
    EXPECT_FALSE(picture.lineVisible());
    EXPECT_FALSE(picture.textContent());

    const pugi::xml_node vml = fallbackShape("QRCode");
    EXPECT_STREQ(vml.attribute("type").value(), "#_x0000_t75");
    EXPECT_STREQ(vml.child("v:imagedata").attribute("r:id").value(), "rId9");
    EXPECT_EQ(VmlStyle::parse(vml.attribute("style").value()).get("height"), "16560");
}

TEST_F(DrawingCanvasXml, LineVisibilitySwitchesTheOutlineInBothForms) {
    ShapeXml box = canvas_.addTextbox(1, {0, 0, 10, 10}, 4, "Feld");
    box.setLineVisible(false);
    EXPECT_FALSE(box.lineVisible());
    EXPECT_TRUE(path(box.content(), {"wps:spPr", "a:ln", "a:noFill"}));
    EXPECT_STREQ(fallbackShape("Feld").attribute("stroked").value(), "f");
    box.setLineVisible(true);
    EXPECT_TRUE(box.lineVisible());
    EXPECT_FALSE(path(box.content(), {"wps:spPr", "a:ln", "a:noFill"}));
    EXPECT_FALSE(fallbackShape("Feld").attribute("stroked"));

    ShapeXml frame = canvas_.shape();
    EXPECT_FALSE(frame.lineVisible());
    frame.setLineVisible(true);
    EXPECT_TRUE(frame.lineVisible());
    EXPECT_TRUE(path(canvas_.content(), {"wpc:whole", "a:ln", "a:solidFill"}));
    EXPECT_STREQ(fallbackGroup().child("v:shape").attribute("stroked").value(), "t");
}

TEST_F(DrawingCanvasXml, RenamingAndDeletingKeepTheFallbackInStep) {
    ShapeXml first = canvas_.addTextbox(1, {0, 0, 10, 10}, 4, "Eins");
    canvas_.addTextbox(1, {0, 20, 10, 10}, 5, "Zwei");
    first.setName("ESQRBetrag");
    EXPECT_TRUE(fallbackShape("ESQRBetrag"));
    EXPECT_FALSE(fallbackShape("Eins"));

    first.remove();
    EXPECT_FALSE(first.valid());
    ASSERT_EQ(canvas_.items().size(), 1U);
    EXPECT_EQ(canvas_.items().front().name(), "Zwei");
    EXPECT_FALSE(fallbackShape("ESQRBetrag"));

    ShapeXml whole = canvas_.shape();
    whole.remove();
    EXPECT_TRUE(ShapeFinder::canvases(PartXml::root(*document_)).empty());
    EXPECT_FALSE(drawingXml::firstDescendant(paragraph(), "mc:AlternateContent"));
    EXPECT_EQ(std::distance(paragraph().children("w:r").begin(), paragraph().children("w:r").end()), 1);
}

TEST_F(DrawingCanvasXml, LaterCanvasesStackAboveEarlierOnes) {
    const DrawingCanvas second = DrawingCanvas::create(paragraph(), {0, 0, 50, 50}, 9, "Zwei");
    EXPECT_GT(drawingXml::integer(second.shape().node(), "relativeHeight"),
              drawingXml::integer(canvas_.shape().node(), "relativeHeight"));
    const auto names = ShapeFinder::canvases(PartXml::root(*document_));
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(names[1], second);
}

TEST(DrawingCanvasLimits, RefusesWhatItCannotHold) {
    const auto document = PartXml::parse(Form);
    const pugi::xml_node body = PartXml::root(*document).child("w:body");
    EXPECT_THROW(DrawingCanvas::create(body, {0, 0, 10, 10}, 1, "C"), AutomationError);

    const auto legacy =
        PartXml::parse(R"(<w:p xmlns:w="w" xmlns:v="v"><w:r><w:pict>)"
                       R"(<v:group editas="canvas" style="width:100pt;height:50pt"/></w:pict></w:r></w:p>)");
    DrawingCanvas canvas(ShapeXml(drawingXml::firstDescendant(legacy->root(), "v:group")));
    ASSERT_TRUE(canvas.valid());
    EXPECT_FALSE(canvas.editable());
    EXPECT_THROW(canvas.addTextbox(1, {0, 0, 10, 10}, 1, "T"), AutomationError);
    EXPECT_FALSE(DrawingCanvas(ShapeXml(legacy->root().first_child())).valid());
}

TEST(DrawingCanvasText, HasTextCountsCharactersNotParagraphSettings) {
    const auto document = PartXml::parse(Form);
    DrawingCanvas canvas =
        DrawingCanvas::create(PartXml::root(*document).child("w:body").child("w:p"), {0, 0, 99, 99}, 1, "C");
    const ShapeXml box = canvas.addTextbox(1, {0, 0, 10, 10}, 2, "T");
    pugi::xml_node paragraph = box.textContent().child("w:p");
    paragraph.append_child("w:pPr").append_child("w:tabs").append_child("w:tab");
    pugi::xml_node run = paragraph.append_child("w:r");
    run.append_child("w:t");
    EXPECT_FALSE(box.hasText());
    run.append_child("w:tab");
    EXPECT_TRUE(box.hasText());
}

TEST(DrawingIds, HighestIdCoversDocPrAndEveryCNvPr) {
    const auto part =
        PartXml::parse(R"(<w:p xmlns:w="w"><wp:docPr id="5"/><wps:cNvPr id="12"/><pic:cNvPr id="7"/>)"
                       R"(<wp:docPr id="x"/></w:p>)");
    EXPECT_EQ(ShapeFinder::maxDrawingId(part->root()), 12U);
    EXPECT_EQ(ShapeFinder::maxDrawingId(PartXml::parse(Form)->root()), 0U);
}

} // namespace
} // namespace wordbm::ooxml
