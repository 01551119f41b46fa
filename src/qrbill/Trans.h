#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace wordbm {

// The printed headings of the payment part in German, French, Italian and English.
class Trans {
public:
    Trans();

    // The wording of `key` in `language` ("Deutsch", "Französisch", "Italienisch", "Englisch":
    // only the first letter counts). An unknown key or language gives "", and the caller then
    // uses its own German wording.
    std::string Text(std::string_view key, std::string_view language) const;

private:
    void add(std::string key, std::string_view german, std::string_view french, std::string_view italian,
             std::string_view english);

    // Each entry is a tag-list text "D=...;F=...;I=...;E=...".
    std::unordered_map<std::string, std::string> entries_;
};

} // namespace wordbm
