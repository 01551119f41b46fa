#pragma once

#include "engine/slip/SlipFit.h"
#include "engine/word/Forward.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace wordbm {

class QRCoder;
class SlipFont;

// Fits the filled text boxes of the receipt and the payment part into their boxes: a box whose
// lines need more height than it has gets the message and address lines of the row shortened
// (see SlipFit). Runs once every placeholder of an invoice is filled.
class SlipBoxFitter {
public:
    explicit SlipBoxFitter(const SlipFont& font) : font_(font) {}

    // What each of the row's value lines may give up, by its text.
    using Roles = std::map<std::string, SlipFit::Give, std::less<>>;

    // Throws AutomationError when a box cannot be made to fit (nothing in it may give).
    void Fit(word::Document& doc, const QRCoder& coder, std::int32_t row) const;

    // The text boxes Fit looks at: those of the receipt and the payment part.
    static std::vector<word::ShapePtr> Boxes(word::Document& doc);
    // The lines of a box as Fit reads them, their size and boldness those of their first character;
    // empty for a box without text.
    static std::vector<SlipFit::Line> LinesOf(word::Shape& box);
    static Roles RolesOf(const QRCoder& coder, std::int32_t row);
    // Whether Fit leaves a box of this size (in points) with these lines as it is.
    bool LeavesAlone(std::vector<SlipFit::Line> lines, const Roles& roles, float width, float height) const;

private:
    static void giveRoles(std::vector<SlipFit::Line>& lines, const Roles& roles);
    SlipFit fitOf(float width, float height) const;
    void fitBox(word::Shape& box, const Roles& roles) const;

    const SlipFont& font_;
};

} // namespace wordbm
