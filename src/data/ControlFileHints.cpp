#include "data/ControlFileHints.h"

#include "support/Cp1252.h"
#include "support/FileOps.h"
#include "support/Strings.h"

namespace wordbm {

namespace {

constexpr std::string_view Bom = "\xEF\xBB\xBF";
constexpr std::string_view Billing = "Das Fakturaprogramm schreibt ";

std::string lineEndHint(std::string_view bytes) {
    std::size_t lfAlone = 0;
    std::size_t crLf = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        if (bytes[at] == '\n') {
            (at > 0 && bytes[at - 1] == '\r' ? crLf : lfAlone) += 1;
        }
    }
    if (lfAlone == 0) {
        return {};
    }
    if (crLf == 0) {
        return "Hinweis: Die Zeilen der Steuerdatei enden nur mit LF (Linux-Zeilenende). " +
               std::string(Billing) +
               "Windows-Zeilenenden (CR LF); ohne sie wird die ganze Datei als eine einzige Zeile gelesen.";
    }
    return "Hinweis: " + std::to_string(lfAlone) +
           (lfAlone == 1 ? " Zeile der Steuerdatei endet" : " Zeilen der Steuerdatei enden") +
           " nur mit LF statt mit CR LF (Windows-Zeilenende des Fakturaprogramms); " +
           (lfAlone == 1 ? "sie wird" : "sie werden") + " mit der folgenden Zeile zusammen gelesen.";
}

std::string utf8Hint(std::string_view bytes) {
    std::size_t characters = 0;
    std::string_view first;
    for (std::size_t at = bytes.starts_with(Bom) ? Bom.size() : 0; at < bytes.size(); ++at) {
        if (const std::size_t length = utf8SequenceLength(bytes, at)) {
            first = first.empty() ? bytes.substr(at, length) : first;
            ++characters;
            at += length - 1;
        }
    }
    if (characters == 0) {
        return {};
    }
    // The character as meant, and as the cp1252 reading shows it.
    return "Hinweis: Die Steuerdatei enthält " + std::to_string(characters) + " Zeichen in UTF-8 (z. B. «" +
           std::string(first) + "», gelesen als «" + cp1252ToUtf8(first) + "»). " + std::string(Billing) +
           "ANSI (Windows-1252); diese Zeichen werden verfälscht gelesen.";
}

} // namespace

const std::string ControlFileHints::NoInvoices = "Die Steuerdatei enthält keine Rechnungen.";

std::vector<std::string> ControlFileHints::of(std::string_view bytes) {
    std::vector<std::string> hints;
    if (auto hint = lineEndHint(bytes); !hint.empty()) {
        hints.push_back(std::move(hint));
    }
    if (bytes.starts_with(Bom)) {
        hints.push_back("Hinweis: Die Steuerdatei beginnt mit einer UTF-8-Kennung (BOM). " +
                        std::string(Billing) +
                        "ANSI (Windows-1252); die Kennung wird als Teil des ersten Feldnamens gelesen.");
    }
    if (auto hint = utf8Hint(bytes); !hint.empty()) {
        hints.push_back(std::move(hint));
    }
    return hints;
}

std::vector<std::string> ControlFileHints::ofFile(const std::string& path) {
    const auto bytes = readFileBytes(path);
    return bytes ? of(*bytes) : std::vector<std::string>{};
}

} // namespace wordbm
