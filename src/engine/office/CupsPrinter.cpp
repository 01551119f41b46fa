#include "CupsPrinter.h"

#include "engine/word/AutomationError.h"
#include "support/FileOps.h"

#include <cstdlib>
#include <cups/cups.h>
#include <filesystem>
#include <memory>

namespace wordbm::office {

namespace {

struct DestinationDeleter {
    void operator()(cups_dest_t* destination) const { cupsFreeDests(1, destination); }
};
using Destination = std::unique_ptr<cups_dest_t, DestinationDeleter>;

const char* const NoPrinter = "Kein Drucker eingerichtet.";

// cupsGetNamedDest says "not found" also when it reached no server at all; only a connection of
// our own tells the two apart. Returns the system's reason, empty when the server answers.
std::string serverUnreachable() {
    http_t* http =
        httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, 5000, nullptr);
    if (http == nullptr) {
        return cupsLastErrorString();
    }
    httpClose(http);
    return {};
}

AutomationError notFound(const std::string& text) {
    const std::string reason = serverUnreachable();
    return AutomationError(reason.empty() ? text : "Der Druckdienst (CUPS) ist nicht erreichbar: " + reason);
}

// "queue/instance" names an instance with its own saved options, as lp -d does.
Destination namedDestination(const std::string& name) {
    const auto slash = name.find('/');
    const std::string queue = name.substr(0, slash);
    const std::string instance = slash == std::string::npos ? std::string() : name.substr(slash + 1);
    Destination destination(
        cupsGetNamedDest(CUPS_HTTP_DEFAULT, queue.c_str(), instance.empty() ? nullptr : instance.c_str()));
    if (!destination) {
        throw notFound("Drucker nicht gefunden: " + name);
    }
    return destination;
}

Destination defaultDestination() {
    Destination destination(cupsGetNamedDest(CUPS_HTTP_DEFAULT, nullptr, nullptr));
    if (!destination) {
        throw notFound(NoPrinter);
    }
    return destination;
}

std::string configuredPrinter() {
    const char* printer = std::getenv("WORDBM_PRINTER");
    return printer != nullptr ? printer : "";
}

} // namespace

void CupsPrinter::print(const std::string& pdfPath, const std::string& printerName,
                        const std::string& title) {
    if (const std::string problem = FileOpenCheck(pdfPath); !problem.empty()) {
        throw AutomationError(problem);
    }
    const std::string name = printerName.empty() ? configuredPrinter() : printerName;
    const Destination destination = name.empty() ? defaultDestination() : namedDestination(name);
    const std::string jobTitle = title.empty() ? std::filesystem::path(pdfPath).filename().string() : title;
    // The destination's saved options (an instance's copies, duplex ...) go with the job.
    const int job = cupsPrintFile2(CUPS_HTTP_DEFAULT, destination->name, pdfPath.c_str(), jobTitle.c_str(),
                                   destination->num_options, destination->options);
    if (job == 0) {
        throw AutomationError("Drucken auf " + std::string(destination->name) +
                              " fehlgeschlagen: " + cupsLastErrorString());
    }
}

std::string CupsPrinter::defaultPrinter() {
    if (std::string configured = configuredPrinter(); !configured.empty()) {
        return configured;
    }
    const Destination destination(cupsGetNamedDest(CUPS_HTTP_DEFAULT, nullptr, nullptr));
    return destination ? destination->name : "";
}

} // namespace wordbm::office
