#pragma once

#include "engine/word/Forward.h"

namespace wordbm::word {

class Fields {
public:
    virtual ~Fields() = default;
    virtual int Count() const = 0;
    virtual FieldPtr Item(int index) = 0; // 1-based, in document order; nested fields after their outer field
};

class Field {
public:
    virtual ~Field() = default;
    // The field code (Code()->Text() is e.g. " MERGEFIELD KliName \* MERGEFORMAT "); a nested
    // field's result is not part of the outer code.
    virtual RangePtr Code() = 0;
    virtual RangePtr Result() = 0;
    // Selects the whole field; typing then replaces it.
    virtual void Select() = 0;
    virtual void Delete() = 0; // removes the whole field, code and result
};

} // namespace wordbm::word
