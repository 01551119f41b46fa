#pragma once

#include <array>
#include <string>

// Turns the five free address lines of the billing data into the six structured fields of the
// QR-bill (name, street, house number, postcode, town, country).
namespace wordbm {

using AddressLines = std::array<std::string, 5>;

struct AddressFields {
    std::string Name;
    std::string Strasse;
    std::string HausNr;
    std::string PLZ;
    std::string Ort;
    std::string Land;
};

// Splits by position and by the first or last blank in a line. The rules are simple on purpose
// and keep their known odd outcomes (a country word on the last line is read as the town).
AddressFields SplitAddressFields(const AddressLines& lines);

// The fields joined by `separator` (an empty one becomes CR LF, also in the caller's variable),
// each quoted when `quote` is given and labelled when asked; with `block`, the four-line block.
// A non-empty `prefix` makes field names instead (prefix + "Name", ...), without splitting.
std::string SplitAddress(const AddressLines& lines, std::string& separator, const std::string& quote = {},
                         bool labelled = false, bool block = false, const std::string& prefix = {});

// The six fields joined by CR LF, or the four-line block.
std::string SplitAddress(const AddressLines& lines, bool block = false);

// Four lines: each non-empty (trimmed) line is kept, then the block is filled up to four lines
// with CR LF. An empty block is four CR LF.
std::string AddressBlock(const std::array<std::string, 4>& lines);

} // namespace wordbm
