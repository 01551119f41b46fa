#pragma once

#include "engine/slip/SlipFit.h"
#include "engine/word/Forward.h"

#include <cstdint>
#include <map>
#include <string>

namespace wordbm {

class QRCoder;
class SlipFont;

// Fits the filled text boxes of the receipt and the payment part into their boxes: a box whose
// lines need more height than it has gets the message and address lines of the row shortened
// (see SlipFit). Runs once every placeholder of an invoice is filled.
class SlipBoxFitter {
public:
    explicit SlipBoxFitter(const SlipFont& font) : font_(font) {}

    // Throws AutomationError when a box cannot be made to fit (nothing in it may give).
    void Fit(word::Document& doc, const QRCoder& coder, std::int32_t row) const;

private:
    // What each of the row's value lines may give up, by its text.
    using Roles = std::map<std::string, SlipFit::Give, std::less<>>;

    static Roles rolesOf(const QRCoder& coder, std::int32_t row);
    void fitBox(word::Shape& box, const Roles& roles) const;

    const SlipFont& font_;
};

} // namespace wordbm
