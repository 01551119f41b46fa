#include "engine/slip/SlipMarks.h"

#include "engine/slip/SlipCanvasName.h"
#include "engine/slip/SlipLayout.h"
#include "engine/word/Document.h"
#include "engine/word/Shapes.h"
#include "support/ProgramData.h"

namespace wordbm {

std::string SlipMarks::DefaultFolder() {
    return ProgramDataPath("img");
}

const std::vector<SlipMarks::Mark>& SlipMarks::Table() {
    static const std::vector<Mark> marks{
        {Field::Amount, "kdx6meb.png", "ET", 27, 72, 30, 10},
        {Field::Debtor, "kdx6mez.png", "ET", 7, 41, 50, 20},
        {Field::Amount, "kdx6mzb.png", "ZT", 14, 72, 40, 15},
        {Field::Debtor, "kdx6mzz.png", "ZT", 58, 41, 65, 25},
    };
    return marks;
}

void SlipMarks::Place(word::Document& doc, Field field) const {
    for (const Mark& mark : Table()) {
        if (mark.field == field) {
            placeInto(doc, mark);
        }
    }
}

void SlipMarks::placeInto(word::Document& doc, const Mark& mark) const {
    const std::string file = folder_ + "/" + std::string(mark.file);
    for (const word::ShapePtr& canvas : SlipCanvasName::Canvases(doc, mark.canvasCode)) {
        canvas->CanvasItems()->AddPicture(file, false, true, SlipLayout::points(mark.left),
                                          SlipLayout::points(mark.top), SlipLayout::points(mark.width),
                                          SlipLayout::points(mark.height));
    }
}

} // namespace wordbm
