#pragma once

#include <iosfwd>
#include <string>

namespace wordbm {

// `wordbm inspect`: what a form holds, story by story, for people who support forms: every
// bookmark (hidden ones too) with its text, every field with its code and merge-field name, and
// the shapes. Reads the form only; never saves it.
class FormInspection {
public:
    FormInspection(std::ostream& out, std::ostream& err) : out_(out), err_(err) {}

    // Returns the exit code: 0, or 2 when the form cannot be opened.
    int run(const std::string& formPath, bool json);

private:
    std::ostream& out_;
    std::ostream& err_;
};

} // namespace wordbm
