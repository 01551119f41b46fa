#pragma once

#include "engine/ports/SlipChoices.h"
#include "engine/word/Forward.h"

#include <cstdint>
#include <string>

namespace wordbm {

class QRCoder;

// The QR payment slip as the engine needs it: built once into a form, filled per invoice. The
// slip's own bookmarks carry fields beginning with "ESQR"; without a slip builder the engine
// leaves them alone.
class SlipPort {
public:
    virtual ~SlipPort() = default;

    // Lays the chosen pieces of the slip into the document. May throw AutomationError.
    virtual void Build(word::Application& word, word::Document& doc, const SlipChoices& choices) = 0;
    // Fills one slip placeholder from data line `row`. May throw AutomationError.
    virtual void Fill(word::Application& word, word::Document& doc, word::Bookmark& placeholder,
                      const std::string& field, const QRCoder& coder, std::int32_t row) = 0;
    // Called once the placeholders of data line `row` are filled, to fit the filled texts into
    // their boxes. May throw AutomationError.
    virtual void Finish(word::Document& /*doc*/, const QRCoder& /*coder*/, std::int32_t /*row*/) {}
};

} // namespace wordbm
