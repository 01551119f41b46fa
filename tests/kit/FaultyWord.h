#pragma once

#include "engine/word/Forward.h"

#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace wordbm::testing {

class FaultyApplication;

// The embedded word processor with the failures a test asks for: it refuses to start, refuses
// some document operations, or (through each instance) crashes or loses a document closed by hand.
// Every instance it makes is kept, in the order made.
class FaultyWord {
public:
    // What a refused document operation throws.
    static constexpr const char* Refusal = "Der Vorgang wurde vom Dokument abgelehnt.";

    std::function<word::ApplicationPtr()> factory();
    // The instance made last.
    FaultyApplication& app() const { return *apps.back(); }

    bool refuseStart = false;
    // Document members that throw Refusal: "SaveAs2", "ExportAsFixedFormat", "PrintOut".
    std::set<std::string> refused;
    std::vector<std::shared_ptr<FaultyApplication>> apps;

private:
    // A merge run's workers start their instances side by side.
    std::mutex mutex_;
};

} // namespace wordbm::testing
