#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wordbm::testing {

// A small invoice form for one test, with merge fields as Word writes them, bookmarks, text boxes,
// a header and several sections, saved as a .docx on a blank form of the embedded word processor.
class TestForm {
public:
    // "\r" ends a paragraph.
    TestForm& text(std::string_view text);
    TestForm& field(const std::string& code, const std::string& result);
    // «name» over the code " MERGEFIELD name ".
    TestForm& mergeField(const std::string& name);
    TestForm& bookmark(const std::string& name, std::string_view text);
    // A text box holding `content`, anchored at this point.
    TestForm& textBox(const std::string& name, const TestForm& content);
    // The first section's primary header; the sections after it show it too.
    TestForm& header(const TestForm& content);
    TestForm& sections(int count);

    void save(const std::string& path) const;

private:
    std::string paragraphsXml() const;
    TestForm& append(const std::string& runXml);

    std::vector<std::string> paragraphs_;
    std::string open_;
    std::string header_;
    int sections_ = 1;
};

} // namespace wordbm::testing
