#pragma once

#include "engine/ports/OptionsPort.h"
#include "settings/Opt.h"

namespace wordbm {

// The engine's options ("Options", "DOCOpen", "MergerTemplate") and the window's own (last
// folders, recent files) kept in the user's Opt store as text; a change is written to the store
// at once. Read-only, it lets a batch verb use the remembered mask without changing what the
// window remembers.
class OptOptions final : public OptionsPort {
public:
    // The store must outlive the adapter.
    OptOptions(Opt& store, bool readOnly) : store_(store), readOnly_(readOnly) {}

    std::string get(const std::string& key) override;
    void set(const std::string& key, const std::string& value) override;

    // Opens the section of the merge tool, "[Billing\Merger]" of "Tarvell\KDX6", before the engine
    // reads the remembered mask; returns the store so that it can open it in an initializer.
    static Opt& openMergerSection(Opt& store);

private:
    Opt& store_;
    bool readOnly_;
};

} // namespace wordbm
