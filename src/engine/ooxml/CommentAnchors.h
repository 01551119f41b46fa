#pragma once

#include <memory>

namespace wordbm::ooxml {

class Package;

// The places where comments are anchored in the text. LibreOfficeKit 7.4 refuses to load any
// text document that holds comments ("loadComponentFromURL returned an empty reference"), while
// its soffice converter loads the same file; Word's PDF export leaves comments out anyway. So the
// copy handed to the PDF worker goes without the anchors, and the comments themselves stay unread.
class CommentAnchors {
public:
    // True when the main document has a comments part.
    static bool present(const Package& package);
    // A copy of the package without the anchors in any story part; the package itself is left as it is.
    static std::unique_ptr<Package> withoutAnchors(const Package& package);
};

} // namespace wordbm::ooxml
