#pragma once

#include "engine/word/Forward.h"

#include <optional>

namespace wordbm::word {

// One word-processor instance. Every member may throw AutomationError.
class Application {
public:
    virtual ~Application() = default;

    virtual DocumentsPtr Documents() = 0;
    // The document that receives new bookmarks; throws when no document is open.
    virtual DocumentPtr ActiveDocument() = 0;
    // The cursor of the active document.
    virtual SelectionPtr Selection() = 0;

    virtual bool Visible() const = 0;
    virtual void Visible(bool visible) = 0;
    virtual bool ScreenUpdating() const = 0;
    virtual void ScreenUpdating(bool updating) = 0;

    // Without an argument the instance decides about unsaved documents itself (the embedded one
    // discards them, there is nobody to ask); wdDoNotSaveChanges or wdSaveChanges decide for it.
    virtual void Quit(std::optional<int> saveChanges = std::nullopt) = 0;
};

} // namespace wordbm::word
