#include "settings/OptOptions.h"

namespace wordbm {

std::string OptOptions::get(const std::string& key) {
    const Variant value = store_.Item(key, Variant(std::string()));
    return value.isNull() ? std::string() : value.toText();
}

void OptOptions::set(const std::string& key, const std::string& value) {
    if (!readOnly_) {
        store_.ItemLet(key, Variant(value));
        store_.ItemSave(key);
    }
}

Opt& OptOptions::openMergerSection(Opt& store) {
    store.Init("Tarvell\\KDX6", "Billing", "Merger");
    return store;
}

} // namespace wordbm
