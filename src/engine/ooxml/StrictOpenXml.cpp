#include "engine/ooxml/StrictOpenXml.h"

#include <array>
#include <utility>

namespace wordbm::ooxml {

namespace {

constexpr std::string_view StrictBase = "http://purl.oclc.org/ooxml/";
constexpr std::string_view TransitionalBase = "http://schemas.openxmlformats.org/";
// The only names that differ beyond the inserted year.
constexpr std::array<std::pair<std::string_view, std::string_view>, 2> Renamed{{
    {"extendedProperties", "extended-properties"},
    {"customProperties", "custom-properties"},
}};
constexpr std::string_view Conformance = " w:conformance=\"strict\"";

bool endsUri(char c) {
    return c == '"' || c == '\'' || c == '<' || c == ' ' || c == '>';
}

} // namespace

bool StrictOpenXml::mentions(std::string_view xml) {
    return xml.find(StrictBase) != std::string_view::npos;
}

// "<area>/<rest>" becomes "<area>/2006/<rest>": wordprocessingml/main, drawingml/picture,
// officeDocument/relationships/header, officeDocument/math and the rest of ECMA-376's list.
std::string StrictOpenXml::transitionalUri(std::string_view uri) {
    if (!uri.starts_with(StrictBase)) {
        return std::string(uri);
    }
    std::string_view rest = uri.substr(StrictBase.size());
    const auto slash = rest.find('/');
    if (slash == std::string_view::npos) {
        return std::string(uri);
    }
    std::string result(TransitionalBase);
    result += rest.substr(0, slash);
    result += "/2006";
    std::string tail(rest.substr(slash));
    for (const auto& [strict, transitional] : Renamed) {
        const std::string last = "/" + std::string(strict);
        if (tail.size() >= last.size() && tail.compare(tail.size() - last.size(), last.size(), last) == 0) {
            tail.replace(tail.size() - strict.size(), strict.size(), transitional);
        }
    }
    return result + tail;
}

std::string StrictOpenXml::transitional(std::string_view xml) {
    std::string result;
    result.reserve(xml.size());
    std::size_t at = 0;
    while (true) {
        const auto found = xml.find(StrictBase, at);
        if (found == std::string_view::npos) {
            break;
        }
        auto end = found;
        while (end < xml.size() && !endsUri(xml[end])) {
            ++end;
        }
        result += xml.substr(at, found - at);
        result += transitionalUri(xml.substr(found, end - found));
        at = end;
    }
    result += xml.substr(at);
    if (const auto conformance = result.find(Conformance); conformance != std::string::npos) {
        result.erase(conformance, Conformance.size());
    }
    return result;
}

} // namespace wordbm::ooxml
