#pragma once

#include <string>
#include <vector>

namespace wordbm {

// Where the pieces of the QR payment slip go and what they hold. Lengths are millimetres: canvases
// relative to the page, boxes relative to their canvas, at their nominal places (the builder shifts
// every box 1 mm up and left).
class SlipLayout {
public:
    // One heading and/or value placeholder of a box. The heading's wording comes from the slip
    // texts under key + "TX"; `german` stands in where they have none.
    struct Entry {
        std::string key;
        std::string german; // empty: the entry writes its value only
        bool value = true;  // false: a heading without a value (the part titles)
        // The value starts a new line below its heading. The QR code's box keeps both on one line,
        // so that the code starts at the box's top once the heading is cleared.
        bool valueOnNewLine = true;
    };

    struct Box {
        float left = 0.0F;
        float top = 0.0F;
        float width = 0.0F;
        float height = 0.0F;
        std::vector<Entry> entries; // none: the part's frame, whose border is the cut mark
        bool title = false;         // headings in the title size
    };

    struct Sizes {
        float title = 11.0F;
        float heading = 0.0F;
        float value = 0.0F;
    };

    struct Canvas {
        std::string code; // "ST", "ET", "ZT"
        float left = 0.0F;
        float top = 0.0F;
        float width = 0.0F;
        float height = 0.0F;
        Sizes sizes;
        std::vector<Box> boxes; // in the order created
    };

    static constexpr const char* FontName = "Arial";
    // Every box stands this far left of and above its nominal place.
    static constexpr float BoxShiftMm = 1.0F;
    // The body text keeps this far above every canvas: the boxes' shift and a clear gap.
    static constexpr float TextDistanceMm = 3.0F;
    // The slip's places are measured on an A4 page.
    static constexpr float PageHeightMm = 297.0F;

    static const Canvas& separation();
    static const Canvas& receipt();
    static const Canvas& paymentPart();

    // (millimetres / 10) x 72 / 2.54, worked out in single precision.
    static float points(float millimetres);
};

} // namespace wordbm
