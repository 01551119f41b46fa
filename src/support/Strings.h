#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace wordbm {

// Trims blanks (spaces only, not tabs) at both ends, as the classic Trim does.
std::string trim(std::string_view text);
std::string trimLeft(std::string_view text);
std::string trimRight(std::string_view text);

// Trims, drops one leading and one trailing delimiter (independently), then turns doubled
// delimiters into single ones. An empty delimiter only trims.
std::string Unquote(std::string_view text, std::string_view delim = "\"");

// Encloses in the delimiter and doubles the delimiters inside.
std::string Quote(std::string_view text, std::string_view delim = "\"");

// Splits at every occurrence of the separator; an empty text gives one empty piece,
// an empty separator gives the whole text as one piece.
std::vector<std::string> split(std::string_view text, std::string_view separator);

std::string join(const std::vector<std::string>& pieces, std::string_view separator);

// Replaces every occurrence of `from` (non-empty) by `to`, left to right, without rescanning.
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);

// ASCII-only case folding, enough for field names, switches and tags.
std::string toLowerAscii(std::string_view text);
bool equalsIgnoreCase(std::string_view a, std::string_view b);

// Length of the well-formed UTF-8 sequence of two to four bytes at `at` (no overlong forms, no
// surrogates, nothing beyond U+10FFFF); 0 for anything else, plain ASCII included.
std::size_t utf8SequenceLength(std::string_view text, std::size_t at);

// Decimal digits of `number`, left-padded with "0" to `width`; a longer text keeps its last `width` digits.
std::string zeroPad(long long number, int width);

// Appends `text` as XML element text, escaped as the document writer escapes it (& < >).
void appendXmlText(std::string& out, std::string_view text);

} // namespace wordbm
