#pragma once

#include <optional>
#include <string>

namespace wordbm {

class FileNameTemplate;

// The dialog in which the user edits a mask (frmFileNameTemplate in the window). The template
// owns its editor; the editor reaches the template only while it is shown, so it never holds a
// reference that could outlive it.
class FileNameTemplateEditor {
public:
    virtual ~FileNameTemplateEditor() = default;

    // Shows the editor modally with `mask` in its mask field; `owner` supplies the pick lists.
    // The mask field when the user confirmed, nullopt when the dialog was closed any other way.
    virtual std::optional<std::string> Show(const FileNameTemplate& owner, const std::string& mask) = 0;
};

} // namespace wordbm
