#pragma once

#include "engine/ports/UserInterface.h"
#include "names/FileNameTemplateEditor.h"

namespace wordbm {

// The file-name template's editor, shown through the engine's user interface.
class UserInterfaceTemplateEditor : public FileNameTemplateEditor {
public:
    explicit UserInterfaceTemplateEditor(UserInterface& ui) : ui_(ui) {}

    std::optional<std::string> Show(const FileNameTemplate& owner, const std::string& mask) override {
        return ui_.fileNameTemplateDialog(owner, mask);
    }

private:
    UserInterface& ui_;
};

} // namespace wordbm
