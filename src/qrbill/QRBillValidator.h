#pragma once

#include "qrbill/SwissPayload.h"

#include <string>
#include <string_view>
#include <vector>

namespace wordbm {

// Checks one invoice's QR-bill data against the rules of the Swiss QR-bill (data version 0200) and
// answers with German warnings for the user; no warning means a bank will accept the data. It
// never changes a payload: the user's data is what it is, the warnings say what to fix.
//
// A line break after the trailing element and a mixture of CR LF and LF (as our own payloads
// carry inside address groups) are tolerated; see SwissPayload for why.
class QRBillValidator {
public:
    static constexpr std::size_t MaxPayloadCharacters = 997;
    // What the QR code of the payment part holds (version 25, level M, byte mode).
    static constexpr std::size_t MaxPayloadBytes = 997;
    static constexpr std::size_t MaxAdditionalInformation = 140;

    // The data as elements. The length limit is checked on the shortest text they can make
    // (elements joined by LF).
    static std::vector<std::string> validate(const SwissPayload& payload);

    // The payload text as it goes into the QR code; what keeps it from being read is warned about
    // first, and the elements are then only checked when it could be read.
    static std::vector<std::string> validate(std::string_view payloadText);

    // As validate, for a payload this program prints beside its code: also warns where the
    // payment part shows other than the code carries.
    static std::vector<std::string> validatePrinted(std::string_view payloadText);
};

} // namespace wordbm
