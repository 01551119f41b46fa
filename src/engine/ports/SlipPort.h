#pragma once

#include "engine/ports/SlipChoices.h"
#include "engine/ports/SlipFitCheck.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Forward.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

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

    // For a form made ready once for many invoices: fills the placeholder as Fill does for `row`,
    // but writes `standIn()` where a value of the row would stand. What else the row decides (a
    // heading kept or cleared, a mark, the QR code) is done for `row`. A builder that cannot tell
    // its values apart from the rest refuses. May throw AutomationError.
    virtual void FillStandIn(word::Application& /*word*/, word::Document& /*doc*/,
                             word::Bookmark& /*placeholder*/, const std::string& /*field*/,
                             const QRCoder& /*coder*/, std::int32_t /*row*/,
                             const std::function<std::string()>& /*standIn*/) {
        throw AutomationError("Der Einzahlungsschein kann nicht vorbereitet werden.");
    }
    // Rows with the same shape get the same slip but for the values that replace the stand-ins.
    virtual std::string Shape(const QRCoder& /*coder*/, std::int32_t /*row*/) const { return {}; }
    // What replaces the stand-in of `field` for `row`.
    virtual std::string Value(const std::string& /*field*/, const QRCoder& /*coder*/,
                              std::int32_t /*row*/) const {
        return {};
    }
    // Made from a document filled by FillStandIn, with `standIns` the stand-ins by number; null
    // when the builder cannot tell.
    virtual std::unique_ptr<SlipFitCheck> FitCheck(word::Document& /*doc*/,
                                                   const std::vector<std::string>& /*standIns*/) const {
        return nullptr;
    }
};

} // namespace wordbm
