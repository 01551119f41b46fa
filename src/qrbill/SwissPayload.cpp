#include "qrbill/SwissPayload.h"

#include "qrbill/QRBillChecks.h"

#include <bit>

namespace wordbm {

namespace {

struct Elements {
    std::vector<std::string> values;
    bool trailingSeparator = false;
    bool mixedSeparators = false;
};

enum BreakKind : unsigned { CrLf = 1, Lf = 2, Cr = 4 };

// Length of the line break at `pos` (0 when there is none) and its kind.
std::size_t breakAt(std::string_view text, std::size_t pos, unsigned& kind) {
    if (text[pos] == '\n') {
        kind = Lf;
        return 1;
    }
    if (text[pos] != '\r')
        return 0;
    const bool crLf = pos + 1 < text.size() && text[pos + 1] == '\n';
    kind = crLf ? CrLf : Cr;
    return crLf ? 2 : 1;
}

Elements splitElements(std::string_view text) {
    Elements result;
    unsigned kindsSeen = 0;
    std::size_t start = 0;
    for (std::size_t pos = 0; pos < text.size();) {
        unsigned kind = 0;
        const std::size_t length = breakAt(text, pos, kind);
        if (length == 0) {
            ++pos;
            continue;
        }
        result.values.emplace_back(text.substr(start, pos - start));
        kindsSeen |= kind;
        pos += length;
        start = pos;
    }
    result.trailingSeparator = !text.empty() && start == text.size();
    if (!result.trailingSeparator)
        result.values.emplace_back(text.substr(start));
    result.mixedSeparators = std::popcount(kindsSeen) > 1;
    return result;
}

std::string_view elementOrEmpty(const std::vector<std::string>& values, std::size_t index) {
    return index < values.size() ? std::string_view(values[index]) : std::string_view();
}

std::vector<std::string> structureProblems(const std::vector<std::string>& values) {
    auto problems =
        headerProblems(elementOrEmpty(values, 0), elementOrEmpty(values, 1), elementOrEmpty(values, 2));
    if (values.size() < SwissPayload::MinElements || values.size() > SwissPayload::MaxElements)
        problems.push_back("Aufbau: 31 bis 34 Elemente erwartet, gefunden " + std::to_string(values.size()));
    return problems;
}

SwissPayload::Address addressAt(std::vector<std::string>& values, std::size_t first) {
    auto take = [&](std::size_t offset) { return std::move(values[first + offset]); };
    return {take(0), take(1), take(2), take(3), take(4), take(5), take(6)};
}

SwissPayload assemble(Elements&& elements) {
    auto& v = elements.values;
    SwissPayload p;
    p.qrType = std::move(v[0]);
    p.version = std::move(v[1]);
    p.codingType = std::move(v[2]);
    p.account = std::move(v[3]);
    p.creditor = addressAt(v, 4);
    p.ultimateCreditor = addressAt(v, 11);
    p.amount = std::move(v[18]);
    p.currency = std::move(v[19]);
    p.ultimateDebtor = addressAt(v, 20);
    p.referenceType = std::move(v[27]);
    p.reference = std::move(v[28]);
    p.unstructuredMessage = std::move(v[29]);
    p.trailer = std::move(v[30]);
    if (v.size() > 31)
        p.billingInformation = std::move(v[31]);
    for (std::size_t i = 32; i < v.size(); ++i)
        p.alternativeProcedures.push_back(std::move(v[i]));
    p.trailingSeparator = elements.trailingSeparator;
    p.mixedSeparators = elements.mixedSeparators;
    return p;
}

} // namespace

bool SwissPayload::Address::empty() const {
    return type.empty() && name.empty() && streetOrLine1.empty() && houseNumberOrLine2.empty() &&
           postcode.empty() && town.empty() && country.empty();
}

std::optional<SwissPayload> SwissPayload::parse(std::string_view text, std::vector<std::string>* problems) {
    Elements elements = splitElements(text);
    auto found = structureProblems(elements.values);
    if (found.empty())
        return assemble(std::move(elements));
    if (problems)
        problems->insert(problems->end(), found.begin(), found.end());
    return std::nullopt;
}

} // namespace wordbm
