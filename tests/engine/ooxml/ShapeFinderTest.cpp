#include "engine/ooxml/ShapeFinder.h"

#include "CanvasZip.h"
#include "PartXml.h"
#include "engine/ooxml/DrawingXml.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace wordbm::ooxml {
namespace {

using canvastest::CanvasZip;
using canvastest::PartXml;

std::unique_ptr<pugi::xml_document> corpusPart(const std::string& file, const std::string& part) {
    return PartXml::parse(CanvasZip::read(std::filesystem::path(WORDBM_CORPUS_DIR) / "docx" / file).at(part));
}

std::size_t countOf(pugi::xml_node scope, std::string_view name) {
    std::size_t count = 0;
    drawingXml::forEachElement(scope, [&](pugi::xml_node node) {
        count += name == node.name() ? 1 : 0;
        return drawingXml::Visit::Enter;
    });
    return count;
}

TEST(ShapeFinder, WordHeaderCanvasesAreFoundOnceWithNamesTypesAndSizes) {
    const auto header = corpusPart("stress017.docx", "word/header1.xml");
    const auto shapes = ShapeFinder::shapes(header->root());
    ASSERT_EQ(shapes.size(), 3U);
    EXPECT_EQ(shapes[0].name(), "Text Box 55");
    EXPECT_EQ(shapes[0].type(), 17);
    EXPECT_EQ(shapes[0].horizontalRelativeTo(), "column");
    EXPECT_FALSE(shapes[0].isInline());

    const auto canvases = ShapeFinder::canvases(header->root());
    ASSERT_EQ(canvases.size(), 2U);
    const ShapeXml& logo = canvases[0].shape();
    EXPECT_EQ(logo.name(), "Kanwa 6");
    EXPECT_EQ(logo.type(), 20);
    EXPECT_TRUE(logo.isInline());
    EXPECT_NEAR(logo.geometry().width, 40.05, 0.01);
    EXPECT_NEAR(logo.geometry().height, 38.95, 0.01);
    const auto freeforms = canvases[0].items();
    EXPECT_EQ(freeforms.size(), 47U);
    EXPECT_TRUE(std::all_of(freeforms.begin(), freeforms.end(),
                            [](const ShapeXml& item) { return item.type() == 5; }));
    EXPECT_EQ(freeforms.front().name(), "Freeform 8");
    EXPECT_NEAR(freeforms.front().geometry().width, 466725 / 12700.0, 0.001);

    const ShapeXml& rule = canvases[1].shape();
    EXPECT_EQ(rule.name(), "Kanwa 3");
    EXPECT_NEAR(rule.geometry().width, 544.25, 0.01);
    ASSERT_EQ(canvases[1].items().size(), 1U);
    EXPECT_EQ(canvases[1].items()[0].type(), 9);
    EXPECT_TRUE(canvases[1].items()[0].lineVisible());
    EXPECT_FALSE(freeforms.front().lineVisible());
}

TEST(ShapeFinder, LegacyVmlCanvasGivesItsTextBoxesInPointsRelativeToIt) {
    const auto document = corpusPart("Textboxes in drawing canvas.docx", "word/document.xml");
    const auto shapes = ShapeFinder::shapes(document->root());
    ASSERT_EQ(shapes.size(), 2U);
    EXPECT_EQ(shapes[0].type(), 17);
    EXPECT_FLOAT_EQ(shapes[0].geometry().left, 54.0F);
    EXPECT_FLOAT_EQ(shapes[0].geometry().top, 288.0F);
    EXPECT_FLOAT_EQ(shapes[0].geometry().width, 117.0F);
    EXPECT_TRUE(shapes[0].hasText());

    const auto canvases = ShapeFinder::canvases(document->root());
    ASSERT_EQ(canvases.size(), 1U);
    EXPECT_TRUE(canvases[0].shape().isInline());
    EXPECT_FALSE(canvases[0].editable());
    EXPECT_FLOAT_EQ(canvases[0].shape().geometry().width, 432.0F);
    const auto boxes = canvases[0].items();
    ASSERT_EQ(boxes.size(), 2U);
    // Group units (7200 x 4320 from 2446, 3791) over 432 x 252 pt.
    EXPECT_NEAR(boxes[0].geometry().left, (3496 - 2446) * 0.06, 0.001);
    EXPECT_NEAR(boxes[0].geometry().top, (4562 - 3791) * 252.0 / 4320, 0.001);
    EXPECT_NEAR(boxes[1].geometry().width, 1350 * 0.06, 0.001);
    EXPECT_EQ(boxes[1].type(), 17);
    EXPECT_TRUE(boxes[1].hasText());
    EXPECT_EQ(DrawingCanvas::enclosing(boxes[1].textContent()), canvases[0]);
}

TEST(ShapeFinder, DrawingsStoredTwiceAreListedFromTheChoiceOnly) {
    const auto document = corpusPart("DrawingML shape effects.docx", "word/document.xml");
    const auto shapes = ShapeFinder::shapes(document->root());
    EXPECT_EQ(shapes.size(), countOf(document->root(), "wp:inline") + countOf(document->root(), "wp:anchor"));
    for (const ShapeXml& shape : shapes) {
        EXPECT_FALSE(drawingXml::ancestor(shape.node(), "mc:Fallback")) << shape.name();
    }
    const auto typeOf = [&](const std::string& name) {
        const auto found =
            std::find_if(shapes.begin(), shapes.end(), [&](const ShapeXml& s) { return s.name() == name; });
        return found == shapes.end() ? 0 : found->type();
    };
    EXPECT_EQ(typeOf("Rectangle 8"), 1);
    EXPECT_EQ(typeOf("Group 14"), 6);
    EXPECT_EQ(typeOf("Canvas 32"), 20);
    EXPECT_EQ(ShapeFinder::canvases(document->root()).size(), 6U);
}

} // namespace
} // namespace wordbm::ooxml
