#include "qrbill/SplitAddress.h"

#include "support/Strings.h"

#include <algorithm>
#include <string_view>

namespace wordbm {
namespace {

constexpr std::string_view CrLf = "\r\n";
constexpr int First = 1;
constexpr int Last = 5;
constexpr int Bottom = 6; // the ">" entry below the last line

bool isSalutation(const std::string& entry) {
    return entry == "Herr" || entry == "Frau" || entry == "Herr und Frau" || entry == "Firma";
}

bool isCountryWord(const std::string& entry) {
    static constexpr std::string_view words[] = {"CH", "Schweiz",      "Suisse", "Svizzera",   "Switzerland",
                                                 "D",  "Deutschland",  "F",      "Frankreich", "France",
                                                 "I",  "Italien",      "Italia", "Italy",      "USA",
                                                 "GB", "Great Britain"};
    return std::find(std::begin(words), std::end(words), entry) != std::end(words);
}

// Entry 0 is "<", entries 1 to 5 the trimmed lines, entry 6 ">": the markers end the scans.
std::array<std::string, 7> workingList(const AddressLines& lines) {
    std::array<std::string, 7> entries;
    entries[0] = "<";
    for (int i = First; i <= Last; ++i) {
        entries[i] = trim(lines[i - 1]);
    }
    entries[Bottom] = ">";
    return entries;
}

// Splits "8000 Zürich" at its first blank; a line without a blank is the second part alone.
void splitAtFirstBlank(const std::string& entry, std::string& before, std::string& after) {
    const auto blank = entry.find(' ');
    if (blank == std::string::npos) {
        after = entry;
        return;
    }
    before = entry.substr(0, blank);
    after = entry.substr(blank + 1);
}

// Splits "Musterweg 12" at its last blank; a line without a blank is the first part alone.
void splitAtLastBlank(const std::string& entry, std::string& before, std::string& after) {
    const auto blank = entry.rfind(' ');
    if (blank == std::string::npos) {
        before = entry;
        return;
    }
    before = entry.substr(0, blank);
    after = entry.substr(blank + 1);
}

class AddressSplitter {
public:
    explicit AddressSplitter(const AddressLines& lines) : entries_(workingList(lines)) {}

    AddressFields run() {
        findName();
        position_ = Last;
        findCountry();
        if (fields_.Land.empty() && !fields_.Name.empty()) {
            fields_.Land = "CH";
        }
        if (const auto* entry = nextNonEmptyUpward()) {
            splitAtFirstBlank(*entry, fields_.PLZ, fields_.Ort);
            --position_;
        }
        if (const auto* entry = nextNonEmptyUpward()) {
            splitAtLastBlank(*entry, fields_.Strasse, fields_.HausNr);
            --position_;
            appendLineBetweenNameAndStreet();
        }
        return fields_;
    }

private:
    void findName() {
        nameEnd_ = Bottom;
        for (int i = First; i <= Bottom; ++i) {
            const auto& entry = entries_[i];
            if (entry == ">") {
                return;
            }
            if (entry.empty() || isSalutation(entry)) {
                continue;
            }
            fields_.Name = entry;
            nameEnd_ = i + 1;
            return;
        }
    }

    // Runs only when no name was found or it stood in line 4 or 5 (the scan may not pass the
    // name end); ordinary addresses take the default country instead.
    void findCountry() {
        while (position_ <= nameEnd_) {
            const auto& entry = entries_[position_];
            if (entry == "<") {
                return;
            }
            if (entry.empty()) {
                --position_;
                continue;
            }
            if (isCountryWord(entry)) {
                fields_.Land = entry;
                --position_;
            }
            return;
        }
    }

    // Scans upward from the current position, not above the name end; empty entries are skipped.
    const std::string* nextNonEmptyUpward() {
        while (position_ >= nameEnd_) {
            const auto& entry = entries_[position_];
            if (entry == "<") {
                return nullptr;
            }
            if (!entry.empty()) {
                return &entry;
            }
            --position_;
        }
        return nullptr;
    }

    // One line between name and street (a department, a c/o) belongs to the name;
    // with more lines between them, they are dropped.
    void appendLineBetweenNameAndStreet() {
        if (position_ != nameEnd_) {
            return;
        }
        const auto& entry = entries_[position_];
        if (!entry.empty()) {
            fields_.Name += " " + entry;
        }
    }

    std::array<std::string, 7> entries_;
    AddressFields fields_;
    int nameEnd_ = Bottom;
    int position_ = Last;
};

AddressFields fieldNames(const std::string& prefix) {
    return {prefix + "Name", prefix + "Strasse", prefix + "HausNr",
            prefix + "PLZ",  prefix + "Ort",     prefix + "Land"};
}

} // namespace

AddressFields SplitAddressFields(const AddressLines& lines) {
    return AddressSplitter(lines).run();
}

std::string SplitAddress(const AddressLines& lines, std::string& separator, const std::string& quote,
                         bool labelled, bool block, const std::string& prefix) {
    AddressFields f = prefix.empty() ? SplitAddressFields(lines) : fieldNames(prefix);
    if (separator.empty()) {
        separator = CrLf;
    }
    std::array<std::string*, 6> all{&f.Name, &f.Strasse, &f.HausNr, &f.PLZ, &f.Ort, &f.Land};
    if (!quote.empty()) {
        for (auto* field : all) {
            *field = Quote(*field, quote);
        }
    }
    if (labelled) {
        static constexpr std::string_view labels[] = {
            "Name:         ", "Strasse:      ", "HausNr:   ", "PLZ: ", "Ort:          ", "Land:         "};
        for (std::size_t i = 0; i < all.size(); ++i) {
            *all[i] = std::string(labels[i]) + *all[i];
        }
    }
    if (block) {
        return AddressBlock({f.Name, f.Strasse + " " + f.HausNr, f.PLZ + " " + f.Ort, f.Land});
    }
    return join({f.Name, f.Strasse, f.HausNr, f.PLZ, f.Ort, f.Land}, separator);
}

std::string SplitAddress(const AddressLines& lines, bool block) {
    std::string separator(CrLf);
    return SplitAddress(lines, separator, {}, false, block, {});
}

std::string AddressBlock(const std::array<std::string, 4>& lines) {
    std::string text;
    int count = 0;
    for (const auto& line : lines) {
        const auto trimmed = trim(line);
        if (trimmed.empty()) {
            continue;
        }
        if (!text.empty()) {
            text += CrLf;
        }
        text += trimmed;
        ++count;
    }
    for (int i = count; i <= 3; ++i) {
        text += CrLf;
    }
    return text;
}

} // namespace wordbm
