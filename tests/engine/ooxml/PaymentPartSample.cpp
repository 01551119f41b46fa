#include "PaymentPartSample.h"

#include "PartXml.h"
#include "engine/ooxml/DrawingCanvas.h"
#include "engine/ooxml/DrawingXml.h"
#include "engine/ooxml/ShapeFinder.h"
#include "engine/ooxml/VmlFallback.h"
#include "qrbill/QRImage.h"

#include <gtest/gtest.h>

namespace wordbm::ooxml::canvastest {

namespace {

constexpr const char* QrRelationship = "rId5";

constexpr const char* ContentTypes =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
    R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
    R"(<Default Extension="xml" ContentType="application/xml"/>)"
    R"(<Default Extension="png" ContentType="image/png"/>)"
    R"(<Override PartName="/word/document.xml" )"
    R"(ContentType="application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml"/>)"
    R"(</Types>)";

constexpr const char* PackageRelationships =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="word/document.xml"/>)"
    R"(</Relationships>)";

constexpr const char* DocumentRelationships =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="rId5" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/image" Target="media/image1.png"/>)"
    R"(</Relationships>)";

// Only w and r are declared: the canvas must bring the drawing namespaces itself.
constexpr const char* Document =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    R"(<w:document xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main" )"
    R"(xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships"><w:body>)"
    R"(<w:p><w:r><w:t>Rechnung 3139</w:t></w:r></w:p>)"
    R"(<w:sectPr><w:pgSz w:w="11906" w:h="16838"/>)"
    R"(<w:pgMar w:top="1417" w:right="1417" w:bottom="1134" w:left="1417" w:header="708" w:footer="708" w:gutter="0"/>)"
    R"(</w:sectPr></w:body></w:document>)";

constexpr const char* Payload =
    "SPC\n0200\n1\nCH4431999123000889012\nS\nRobert Schneider AG\nRue du Lac\n1268\n2501\n"
    "Biel\nCH\n\n\n\n\n\n\n\n1949.75\nCHF\nS\nPia-Maria Rutschmann-Schnyder\nGrosse Marktgasse\n"
    "28\n9400\nRorschach\nCH\nQRR\n210000000003139471430009017\nAuftrag vom 15.06.2020\nEPD";

DrawingRect pointsRect(float left, float top, float width, float height) {
    return {PaymentPartSample::points(left), PaymentPartSample::points(top), PaymentPartSample::points(width),
            PaymentPartSample::points(height)};
}

std::string qrPng() {
    QRImage image;
    EXPECT_TRUE(image.Encode(Payload)) << image.lastError();
    return {image.png().begin(), image.png().end()};
}

} // namespace

float PaymentPartSample::points(float millimetres) {
    return millimetres / 10.0F * 72.0F / 2.54F;
}

const std::vector<PaymentPartSample::Box>& PaymentPartSample::boxes() {
    static const std::vector<Box> all{
        {"Rahmen", 0, 0, 148, 105, {}, true},
        {"Titel", 5, 5, 51, 7, {{"Zahlteil", 11, true}}},
        {"Waehrung", 5, 68, 20, 22, {{"Währung", 8, true}, {"CHF", 10, false}}},
        {"Betrag", 25, 68, 31, 22, {{"Betrag", 8, true}, {"1 949.75", 10, false}}},
        {"Angaben",
         56,
         5,
         87,
         85,
         {{"Konto / Zahlbar an", 8, true},
          {"CH44 3199 9123 0008 8901 2", 10, false},
          {"Robert Schneider AG", 10, false},
          {"Referenz", 8, true},
          {"21 00000 00003 13947 14300 09017", 10, false}}},
    };
    return all;
}

CanvasZip PaymentPartSample::build() {
    const auto document = PartXml::parse(Document);
    const pugi::xml_node root = PartXml::root(*document);
    const pugi::xml_node paragraph = root.child("w:body").child("w:p");
    unsigned id = ShapeFinder::maxDrawingId(root) + 1;
    DrawingCanvas canvas = DrawingCanvas::create(
        paragraph, pointsRect(CanvasLeftMm, CanvasTopMm, CanvasWidthMm, CanvasHeightMm), id++, CanvasName);
    for (const Box& box : boxes()) {
        ShapeXml shape = canvas.addTextbox(
            1, pointsRect(box.left - BoxShiftMm, box.top - BoxShiftMm, box.width, box.height), id++,
            box.name);
        shape.setLineVisible(box.border);
        fill(shape.textContent(), box.lines);
    }
    canvas.addPicture(QrRelationship,
                      pointsRect(QrLeftMm - BoxShiftMm, QrTopMm - BoxShiftMm, QrSizeMm, QrSizeMm), id,
                      "QRCode");
    VmlFallback::regenerateAround(canvas.content());

    CanvasZip zip;
    zip["[Content_Types].xml"] = ContentTypes;
    zip["_rels/.rels"] = PackageRelationships;
    zip["word/document.xml"] = PartXml::text(*document);
    zip["word/_rels/document.xml.rels"] = DocumentRelationships;
    zip["word/media/image1.png"] = qrPng();
    return zip;
}

void PaymentPartSample::fill(pugi::xml_node textContent, const std::vector<Line>& lines) {
    while (textContent.first_child()) {
        textContent.remove_child(textContent.first_child());
    }
    for (const Line& line : lines) {
        pugi::xml_node paragraph = textContent.append_child("w:p");
        drawingXml::append(paragraph.append_child("w:pPr"), "w:spacing",
                           {{"w:before", "0"}, {"w:after", "0"}});
        pugi::xml_node run = paragraph.append_child("w:r");
        pugi::xml_node properties = run.append_child("w:rPr");
        drawingXml::append(properties, "w:rFonts",
                           {{"w:ascii", "Arial"}, {"w:hAnsi", "Arial"}, {"w:cs", "Arial"}});
        if (line.bold) {
            properties.append_child("w:b");
        }
        const std::string halfPoints = std::to_string(static_cast<int>(line.size * 2));
        drawingXml::append(properties, "w:sz", {{"w:val", halfPoints}});
        drawingXml::append(properties, "w:szCs", {{"w:val", halfPoints}});
        run.append_child("w:t").text().set(line.text.c_str());
    }
    if (lines.empty()) {
        textContent.append_child("w:p");
    }
}

bool PaymentPartSample::replaceText(pugi::xml_node root, const std::string& from, const std::string& to) {
    bool replaced = false;
    for (const DrawingCanvas& canvas : ShapeFinder::canvases(root)) {
        for (const ShapeXml& item : canvas.items()) {
            drawingXml::forEachElement(item.textContent(), [&](pugi::xml_node node) {
                if (drawingXml::named(node, "w:t") && from == node.child_value()) {
                    node.text().set(to.c_str());
                    VmlFallback::regenerateAround(node);
                    replaced = true;
                }
                return drawingXml::Visit::Enter;
            });
        }
    }
    return replaced;
}

} // namespace wordbm::ooxml::canvastest
