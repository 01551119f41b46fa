#pragma once

#include <string>

namespace wordbm::word {

// The character formatting of a range: reading gives the first character's, writing sets all.
class Font {
public:
    virtual ~Font() = default;
    virtual std::string Name() const = 0;
    virtual void Name(const std::string& name) = 0;
    virtual float Size() const = 0; // points
    virtual void Size(float points) = 0;
    virtual bool Bold() const = 0;
    virtual void Bold(bool bold) = 0;
};

} // namespace wordbm::word
