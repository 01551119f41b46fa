#pragma once

#include "engine/word/Documents.h"

#include <memory>

namespace wordbm::testing {

class FaultyApplication;

// The documents of a FaultyApplication, each handed out wrapped so that its faults reach it.
class FaultyDocuments final : public word::Documents {
public:
    FaultyDocuments(std::shared_ptr<FaultyApplication> application, word::DocumentsPtr real)
        : application_(std::move(application)), real_(std::move(real)) {}

    word::DocumentPtr Open(const std::string& fileName) override;
    int Count() const override;
    word::DocumentPtr Item(int index) override;

private:
    std::shared_ptr<FaultyApplication> application_;
    word::DocumentsPtr real_;
};

} // namespace wordbm::testing
