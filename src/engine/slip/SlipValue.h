#pragma once

#include <string>
#include <string_view>

namespace wordbm {

// How a value of the QR slip is written over its placeholder.
class SlipValue {
public:
    static constexpr char LineBreak = '\v'; // Word's manual line break, character code 11

    // "" for a value that is blank after trimming; otherwise the value with every CR LF turned
    // into a manual line break, those at its ends stripped, and `breaks` line breaks behind it
    // (one when fewer are asked for).
    static std::string Written(std::string_view value, int breaks);

    // The value without its CR LF pairs is empty (the debtor's address block of an unknown debtor).
    static bool EmptyWithoutLineEnds(std::string_view value);
    // Blank after trimming.
    static bool Blank(std::string_view value);
};

} // namespace wordbm
