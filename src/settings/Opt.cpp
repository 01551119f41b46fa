#include "settings/Opt.h"

#include "support/Errors.h"
#include "support/Regional.h"
#include "support/Strings.h"

#include <cfloat>
#include <cmath>
#include <vector>

namespace wordbm {

namespace {

std::string typeName(VarType type) {
    switch (type) {
    case VarType::Null:
        return "Null";
    case VarType::Integer:
        return "Integer";
    case VarType::Long:
        return "Long";
    case VarType::Single:
        return "Single";
    case VarType::Double:
        return "Double";
    case VarType::Currency:
        return "Currency";
    case VarType::Date:
        return "Date";
    case VarType::Boolean:
        return "Boolean";
    case VarType::Decimal:
        return "Decimal";
    case VarType::Byte:
        return "Byte";
    default:
        return "String"; // Empty and text alike
    }
}

std::optional<Variant> toSingle(std::string_view text) {
    const std::optional<double> number = regional::parseNumber(text);
    if (!number || (std::isfinite(*number) && std::fabs(*number) > FLT_MAX)) {
        return std::nullopt;
    }
    return Variant(static_cast<float>(*number));
}

// A whole-number conversion that does not fit is a failed conversion, not an error.
template <typename Convert> std::optional<Variant> toWhole(std::string_view text, Convert convert) {
    const std::optional<double> number = regional::parseNumber(text);
    if (!number) {
        return std::nullopt;
    }
    try {
        return Variant(convert(*number));
    } catch (const OverflowError&) {
        return std::nullopt;
    }
}

std::optional<Variant> toCurrency(std::string_view text) {
    try {
        const std::optional<Currency> amount = regional::parseCurrency(text);
        return amount ? std::optional<Variant>(Variant(*amount)) : std::nullopt;
    } catch (const OverflowError&) {
        return std::nullopt;
    }
}

template <typename T> std::optional<Variant> wrapped(const std::optional<T>& value) {
    return value ? std::optional<Variant>(Variant(*value)) : std::nullopt;
}

std::optional<Variant> converted(const std::string& type, const std::string& text) {
    if (type == "Long") {
        return toWhole(text, regional::toLong);
    }
    if (type == "Integer") {
        return toWhole(text, regional::toInteger);
    }
    if (type == "Byte") {
        return toWhole(text, regional::toByte);
    }
    if (type == "Double") {
        return wrapped(regional::parseNumber(text));
    }
    if (type == "Single") {
        return toSingle(text);
    }
    if (type == "Currency") {
        return toCurrency(text);
    }
    if (type == "Decimal") {
        const std::optional<double> number = regional::parseNumber(text);
        return number ? std::optional<Variant>(Variant(Decimal{*number})) : std::nullopt;
    }
    if (type == "Boolean") {
        return wrapped(regional::parseBoolean(text));
    }
    if (type == "Date") {
        return wrapped(regional::parseDate(text));
    }
    if (type == "Null") {
        return Variant::null();
    }
    return std::nullopt; // "String", "Variant" and unknown names stay text
}

} // namespace

Opt::Opt(std::shared_ptr<SettingsStore> store) : store_(std::move(store)) {
    derivePaths();
}

Opt::~Opt() {
    // A destructor must not let a failing event hook escape; the settings are lost then anyway.
    try {
        Update();
    } catch (...) {
    }
}

void Opt::Init(std::optional<std::string> ThisBasePath, std::optional<std::string> ThisModulePath,
               std::optional<std::string> ThisFolderPath, bool ThisDirectMode) {
    if (ThisBasePath) {
        basePath_ = std::move(*ThisBasePath);
    }
    if (ThisModulePath) {
        progPath_ = std::move(*ThisModulePath);
    }
    if (ThisFolderPath) {
        optionsPath_ = std::move(*ThisFolderPath);
    }
    directMode_ = ThisDirectMode;
    derivePaths();
    loaded_ = false;
    ensureLoaded();
}

void Opt::derivePaths() {
    basePath_ = trim(basePath_);
    progPath_ = trim(progPath_);
    optionsPath_ = trim(optionsPath_);
    fullPath_ = basePath_;
    for (const std::string* part : {&progPath_, &optionsPath_}) {
        if (!part->empty()) {
            fullPath_ += fullPath_.empty() ? *part : "\\" + *part;
        }
    }
    fullPath_ = replaceAll(fullPath_, "\\\\", "\\");

    const std::vector<std::string> parts =
        fullPath_.empty() ? std::vector<std::string>() : split(fullPath_, "\\");
    appName_.clear();
    if (parts.empty()) {
        section_ = "Opt";
    } else if (parts.size() == 1) {
        section_ = parts[0];
    } else if (parts.size() == 2) {
        appName_ = parts[0];
        section_ = parts[1];
    } else {
        appName_ = parts[0] + "\\" + parts[1];
        section_ = join(std::vector<std::string>(parts.begin() + 2, parts.end()), "\\");
    }
}

void Opt::ensureLoaded() {
    if (loaded_) {
        return;
    }
    loaded_ = true;
    cache_.clear();
    untyped_.clear();
    if (!store_) {
        return;
    }
    for (const auto& [key, stored] : store_->getAllSettings(appName_, section_)) {
        cache_.assign(key, decode(stored));
        if (stored.find('>') == std::string::npos) {
            untyped_.insert(ItemMap::foldKey(key));
        }
    }
}

const Opt::ItemMap& Opt::Items() {
    ensureLoaded();
    return cache_;
}

Variant Opt::Item(const std::string& key, const std::optional<Variant>& defaultValue) {
    ensureLoaded();
    std::optional<Variant> value;
    if (directMode_) {
        if (store_) {
            if (const std::optional<std::string> stored = store_->getSetting(appName_, section_, key)) {
                value = decode(*stored, defaultValue);
            }
        }
    } else if (const Variant* cached = cache_.find(key)) {
        // Text stored without a type name takes the default's type, as in direct mode.
        const bool untyped = defaultValue && untyped_.erase(ItemMap::foldKey(key)) != 0;
        value = untyped ? decode(cached->toText(), defaultValue) : *cached;
    }
    if (!value) {
        value = defaultValue ? *defaultValue : Variant();
    }
    cache_.assign(key, *value);
    return *value;
}

void Opt::ItemLet(const std::string& key, const Variant& value) {
    ensureLoaded();
    if (directMode_ && store_) {
        store_->saveSetting(appName_, section_, key, encode(value));
    }
    untyped_.erase(ItemMap::foldKey(key));
    cache_.assign(key, value);
}

void Opt::ItemSave(const std::string& key) {
    ensureLoaded();
    if (const Variant* value = cache_.find(key); value != nullptr && store_) {
        store_->saveSetting(appName_, section_, key, encode(*value));
    }
}

void Opt::ItemDel(const std::string& key) {
    ensureLoaded();
    if (store_) {
        store_->deleteSetting(appName_, section_, key);
    }
    untyped_.erase(ItemMap::foldKey(key));
    cache_.erase(key);
}

void Opt::ItemDelAll() {
    loaded_ = true;
    cache_.clear();
    untyped_.clear();
    if (store_) {
        store_->deleteSection(appName_, section_);
    }
}

void Opt::Update() {
    // A cache never loaded holds no change; writing it would wipe the stored section.
    if (!loaded_ || !store_) {
        return;
    }
    // The hook may run code that changes the cache, so the entries are taken first.
    const ItemMap entries = cache_;
    store_->deleteSection(appName_, section_);
    bool first = true;
    for (const auto& [key, value] : entries) {
        if (!first && eventHook_) {
            eventHook_();
        }
        first = false;
        store_->saveSetting(appName_, section_, key, encode(value));
    }
}

std::string Opt::encode(const Variant& value) {
    return typeName(value.type()) + ">" + value.toText();
}

Variant Opt::decode(const std::string& stored, const std::optional<Variant>& defaultValue) {
    const std::size_t mark = stored.find('>');
    std::string type = mark == std::string::npos ? std::string() : stored.substr(0, mark);
    const std::string text = mark == std::string::npos ? stored : stored.substr(mark + 1);
    if (type.empty() && defaultValue) {
        type = typeName(defaultValue->type());
    }
    if (std::optional<Variant> value = converted(type, text)) {
        return *value;
    }
    return Variant(text);
}

} // namespace wordbm
