// The package reader on any bytes: a form that opens must give up its parts, relationships and
// content types without harm, and what it saves must open again.
#include "engine/ooxml/Package.h"
#include "engine/word/AutomationError.h"

#include <cstdio>
#include <cstdlib>

using wordbm::AutomationError;
using wordbm::ooxml::Package;

namespace {

// Failures with a message are the reader's answer to a damaged part, not a fault.
void readEveryPart(Package& package) try {
    package.mainDocumentPart();
    package.isMacroEnabled();
    package.relationships("");
    for (const auto& name : package.partNames()) {
        package.contentType(name);
        for (const auto& relationship : package.relationships(name)) {
            if (relationship.targetMode != "External") {
                package.resolveTarget(name, relationship.target);
            }
        }
        try {
            package.xml(name);
        } catch (const AutomationError&) {
            // Pictures are no XML.
        }
    }
} catch (const AutomationError&) {
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::unique_ptr<Package> package;
    try {
        package = Package::fromBytes(std::string(reinterpret_cast<const char*>(data), size));
    } catch (const AutomationError&) {
        return 0; // refused with a message, as it should be
    }
    readEveryPart(*package);
    package->clone();
    const std::string saved = package->saveToBytes();
    std::unique_ptr<Package> reopened;
    try {
        reopened = Package::fromBytes(saved);
    } catch (const AutomationError& error) {
        std::fprintf(stderr, "a saved package does not open again: %s\n", error.what());
        std::abort();
    }
    readEveryPart(*reopened);
    return 0;
}
