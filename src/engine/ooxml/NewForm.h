#pragma once

#include <string>

namespace wordbm::ooxml {

// A new invoice form, written from a template form or blank. Its kind follows the name it gets, as
// Word's Save As makes it: a .docm is macro-enabled, a .docx holds no macros, so that Word opens
// either. The template is only read; the form is written atomically. Throws AutomationError.
class NewForm {
public:
    // An empty template path gives a blank A4 page.
    static void create(const std::string& templatePath, const std::string& target);
};

} // namespace wordbm::ooxml
