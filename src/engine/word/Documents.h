#pragma once

#include "engine/word/Forward.h"

#include <string>

namespace wordbm::word {

class Documents {
public:
    virtual ~Documents() = default;
    // Opens a .docx or .docm; the selection then stands at the start of the main story.
    // Throws AutomationError with a German description for a missing, damaged or refused file.
    virtual DocumentPtr Open(const std::string& fileName) = 0;
    virtual int Count() const = 0;
    virtual DocumentPtr Item(int index) = 0;
};

} // namespace wordbm::word
