#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wordbm {

// The elements of a Swiss QR-bill payload (data version 02xx) by name, read back from its text.
//
// Line breaks: CR LF, LF and a lone CR each end exactly one element. Our own payloads join the
// fields of an address group with CR LF and the elements with LF; counted this way they have the
// 31 elements of the standard layout, every field lands where a bank's reader puts it, and the
// mixture is recorded (mixedSeparators) but not held against the payload. Readers treat any line
// break as a separator, so warning about every payload this program writes would only be noise.
struct SwissPayload {
    struct Address {
        std::string type; // "S" structured, "K" combined, empty when the party is not given
        std::string name;
        std::string streetOrLine1;
        std::string houseNumberOrLine2;
        std::string postcode;
        std::string town;
        std::string country;

        bool empty() const;
        bool operator==(const Address&) const = default;
    };

    std::string qrType;
    std::string version;
    std::string codingType;
    std::string account;
    Address creditor;
    Address ultimateCreditor;
    std::string amount;
    std::string currency;
    Address ultimateDebtor;
    std::string referenceType;
    std::string reference;
    std::string unstructuredMessage;
    std::string trailer;
    std::optional<std::string> billingInformation;
    std::vector<std::string> alternativeProcedures;

    // How the text was written. Readers tolerate one line break after the last element.
    bool trailingSeparator = false;
    bool mixedSeparators = false;

    bool operator==(const SwissPayload&) const = default;

    static constexpr std::size_t MinElements = 31;
    static constexpr std::size_t MaxElements = 34;

    // Nullopt when the text is no QR-bill payload this program can read (header, or not 31 to 34
    // elements); the reasons are then added to `problems` as German warnings. Values are not judged.
    static std::optional<SwissPayload> parse(std::string_view text,
                                             std::vector<std::string>* problems = nullptr);
};

} // namespace wordbm
