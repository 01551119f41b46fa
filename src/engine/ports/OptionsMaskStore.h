#pragma once

#include "engine/ports/OptionsPort.h"
#include "names/MaskStore.h"

namespace wordbm {

// Keeps the file-name mask under the option "MergerTemplate".
class OptionsMaskStore : public MaskStore {
public:
    explicit OptionsMaskStore(OptionsPort& options) : options_(options) {}

    std::string load() override { return options_.get(Key); }
    void save(const std::string& mask) override { options_.set(Key, mask); }

    static constexpr const char* Key = "MergerTemplate";

private:
    OptionsPort& options_;
};

} // namespace wordbm
