#pragma once

#include "CanvasZip.h"

#include <pugixml.hpp>
#include <string>
#include <vector>

namespace wordbm::ooxml::canvastest {

// The payment part of a QR-bill as the slip builder lays it into a form: a 148 x 105 mm canvas at
// 62/191 mm on an A4 page; each box 1 mm left of and above its nominal place; the 46 mm QR code as
// a picture at the QR box's corner. Built through DrawingCanvas as the document model will.
class PaymentPartSample {
public:
    static constexpr const char* CanvasName = "kdx6_ESQRMakeZT";
    static constexpr float CanvasLeftMm = 62.0F;
    static constexpr float CanvasTopMm = 191.0F;
    static constexpr float CanvasWidthMm = 148.0F;
    static constexpr float CanvasHeightMm = 105.0F;
    static constexpr float QrLeftMm = 5.0F;
    static constexpr float QrTopMm = 17.0F;
    static constexpr float QrSizeMm = 46.0F;
    // The shift of every box inside the canvas.
    static constexpr float BoxShiftMm = 1.0F;
    // Word's default inner margins of a text box: 0.1 in at the sides, 0.05 in above.
    static constexpr double InsetLeftMm = 2.54;
    static constexpr double InsetTopMm = 1.27;

    struct Line {
        std::string text;
        float size = 10.0F;
        bool bold = false;
    };
    struct Box {
        std::string name;
        float left = 0.0F; // nominal millimetres inside the canvas
        float top = 0.0F;
        float width = 0.0F;
        float height = 0.0F;
        std::vector<Line> lines;
        bool border = false;
    };

    // points = (millimetres / 10) x 72 / 2.54, in single precision, as the slip builder converts.
    static float points(float millimetres);
    static const std::vector<Box>& boxes();

    // A whole .docx: content types, relationships, the document with the canvas, the QR code PNG.
    static CanvasZip build();

    // Writes `lines` as the paragraphs of a text box, Arial, with no spacing around them.
    static void fill(pugi::xml_node textContent, const std::vector<Line>& lines);

    // Replaces the text of every run reading `from` in the text boxes of the part's canvases and
    // rebuilds their fallbacks, as the document model does after an edit; false when none reads so.
    static bool replaceText(pugi::xml_node root, const std::string& from, const std::string& to);
};

} // namespace wordbm::ooxml::canvastest
