#include "data/CSVfile.h"

#include "support/Cp1252.h"
#include "support/Errors.h"
#include "support/Regional.h"
#include "support/Strings.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>
#include <variant>

namespace wordbm {

namespace {

// Far beyond any control file; a larger file reads as an empty one.
constexpr std::size_t MaxFileBytes = std::size_t{1} << 30;
// A header of more pieces than this is hostile input: it reads as a header without names
// instead of costing gigabytes of empty names.
constexpr std::size_t MaxHeaderPieces = std::size_t{1} << 20;

std::int32_t clampToLong(std::int64_t value) {
    if (value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max()) {
        return 0;
    }
    return static_cast<std::int32_t>(value);
}

// The value as a number the way the classic conversions see it; nullopt when it has none.
std::optional<double> numberOf(const Variant& value) {
    return std::visit(
        [](const auto& held) -> std::optional<double> {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<T, std::monostate>) {
                return 0.0;
            } else if constexpr (std::is_same_v<T, bool>) {
                return held ? -1.0 : 0.0; // True is -1 in the classic conversions
            } else if constexpr (std::is_arithmetic_v<T>) {
                return static_cast<double>(held);
            } else if constexpr (std::is_same_v<T, Currency>) {
                return held.toDouble();
            } else if constexpr (std::is_same_v<T, Decimal>) {
                return static_cast<double>(held.value);
            } else if constexpr (std::is_same_v<T, Date>) {
                return held.serial;
            } else if constexpr (std::is_same_v<T, std::string>) {
                return regional::parseNumber(held);
            } else {
                return std::nullopt; // Null has no number
            }
        },
        value.storage());
}

std::string textArgument(const std::optional<Variant>& argument, std::string_view omitted) {
    return argument ? argument->toText() : std::string(omitted);
}

// A value that cannot be taken as a Boolean counts as omitted rather than failing the read.
bool booleanArgument(const std::optional<Variant>& argument, bool omitted) {
    if (!argument) {
        return omitted;
    }
    if (const auto* flag = argument->get<bool>()) {
        return *flag;
    }
    if (const auto* text = argument->get<std::string>()) {
        return regional::parseBoolean(*text).value_or(omitted);
    }
    const auto number = numberOf(*argument);
    return number ? *number != 0 : omitted;
}

// Counts that cannot be converted, or overflow, read as 0 so a bad argument never fails the read.
std::int32_t countArgument(const std::optional<Variant>& argument) {
    if (!argument) {
        return 0;
    }
    const auto number = numberOf(*argument);
    if (!number) {
        return 0;
    }
    try {
        return regional::toLong(*number);
    } catch (const OverflowError&) {
        return 0;
    }
}

std::size_t countPieces(std::string_view line, std::string_view separator) {
    if (line.empty()) {
        return 0;
    }
    std::size_t pieces = 1;
    if (separator.empty()) {
        return pieces;
    }
    if (separator.size() == 1) {
        return pieces + static_cast<std::size_t>(std::count(line.begin(), line.end(), separator.front()));
    }
    for (std::size_t at = line.find(separator); at != std::string_view::npos;
         at = line.find(separator, at + separator.size())) {
        ++pieces;
    }
    return pieces;
}

// Unquote allocates on its way; most values carry neither quotes nor blanks and are taken as they are.
std::string unquoteValue(std::string_view piece) {
    const bool plain = piece.find('"') == std::string_view::npos &&
                       (piece.empty() || (piece.front() != ' ' && piece.back() != ' '));
    return plain ? std::string(piece) : Unquote(piece);
}

} // namespace

void CSVfile::ReadFile(const std::string& path, const std::optional<Variant>& separator,
                       const std::optional<Variant>& delimiter, const std::optional<Variant>& withFieldNames,
                       const std::optional<Variant>& skipColumns, const std::optional<Variant>& skipLines) {
    path_ = path;
    separator_ = textArgument(separator, ";");
    delimiter_ = textArgument(delimiter, "\"");
    withFieldNames_ = booleanArgument(withFieldNames, true);
    skipColumns_ = countArgument(skipColumns);
    skipLines_ = countArgument(skipLines);
    // Kept on purpose: the field cache survives a new file and only its index goes back to 0.
    LoadLines();
    if (withFieldNames_) {
        ParseHeader();
    }
    cachedLine_ = 0;
    blankCheckedLine_ = -1;
}

void CSVfile::LoadLines() {
    text_ = ControlFileText::read(path_, MaxFileBytes);
    window_ = ControlFileText::Window();
    const std::int64_t header = withFieldNames_ ? 1 : 0;
    lineCount_ = clampToLong(static_cast<std::int64_t>(text_->lineCount()) - skipLines_ - header);
}

void CSVfile::ParseHeader() {
    // Kept on purpose: this compares the data-line count with the lines to skip, so a short file
    // keeps the field names it had.
    if (lineCount_ < skipLines_) {
        return;
    }
    const std::string header = physicalLine(skipLines_);
    const std::size_t pieceCount = countPieces(header, separator_);
    const bool outOfRange = skipLines_ < 0 || skipLines_ >= static_cast<std::int64_t>(text_->lineCount());
    if (outOfRange || skipColumns_ < 0 || pieceCount > MaxHeaderPieces) {
        dropFieldNames();
        return;
    }
    std::vector<std::string> names = header.empty() ? std::vector<std::string>() : split(header, separator_);
    const auto size = static_cast<std::int64_t>(names.size());
    std::int64_t count = size - skipColumns_;
    for (std::int64_t i = skipColumns_; i < size; ++i) {
        names[i] = trim(Unquote(names[i]));
    }
    // Kept on purpose: every empty name lowers the count, wherever it stands, so names after
    // an empty one may fall outside the searched range.
    for (std::int64_t i = size - 1; i >= skipColumns_; --i) {
        if (names[i].empty()) {
            --count;
        }
    }
    fieldNames_ = std::move(names);
    fieldNameCount_ = clampToLong(count);
    indexFieldNames();
}

void CSVfile::dropFieldNames() {
    fieldNames_.clear();
    fieldNameCount_ = 0;
    firstIndexOfName_.clear();
}

// The search by name compares from index 0 up to FieldNameCount - 1 and takes the first match;
// the map answers the same without the walk.
void CSVfile::indexFieldNames() {
    firstIndexOfName_.clear();
    const auto searched =
        std::min<std::int64_t>(fieldNameCount_, static_cast<std::int64_t>(fieldNames_.size()));
    for (std::int64_t i = 0; i < searched; ++i) {
        firstIndexOfName_.emplace(fieldNames_[i], static_cast<std::int32_t>(i));
    }
}

std::int64_t CSVfile::LineIndex(std::int32_t n) const {
    if (n > lineCount_ || n < 1) {
        return -1;
    }
    return std::int64_t{n} - (withFieldNames_ ? 0 : 1) + skipLines_;
}

std::string CSVfile::physicalLine(std::int64_t index) const {
    std::string line;
    if (index >= 0) {
        appendCp1252AsUtf8(line, text_->line(static_cast<std::size_t>(index), window_));
    }
    return line;
}

bool CSVfile::isBlankLine(std::int64_t index) {
    // Remembered because a hostile line of blanks would otherwise be scanned on every read.
    if (index != blankCheckedLine_) {
        blankCheckedLine_ = index;
        // A blank is the same byte in cp1252 and UTF-8, so the raw line answers.
        const std::string_view raw =
            index < 0 ? std::string_view() : text_->line(static_cast<std::size_t>(index), window_);
        blankCheckedResult_ = raw.find_first_not_of(' ') == std::string_view::npos;
    }
    return blankCheckedResult_;
}

std::string CSVfile::Line(std::int32_t line) const {
    return physicalLine(LineIndex(line));
}

std::int32_t CSVfile::FieldNameIndex(FieldKey field) const {
    switch (field.kind()) {
    case FieldKey::Kind::Number: {
        const std::int64_t k = std::int64_t{field.number()} + skipColumns_;
        return k >= 1 && k <= fieldNameCount_ ? static_cast<std::int32_t>(k - 1) : -1;
    }
    case FieldKey::Kind::Name: {
        // Kept on purpose: the search starts at index 0 even when leading columns are skipped.
        const auto found = firstIndexOfName_.find(field.name());
        return found == firstIndexOfName_.end() ? -1 : found->second;
    }
    case FieldKey::Kind::Invalid:
        break;
    }
    return -1;
}

Variant CSVfile::FieldName(FieldKey field) const {
    const std::int32_t k = FieldNameIndex(field);
    const std::int64_t at = std::int64_t{skipColumns_} + k;
    if (k < 0 || at >= static_cast<std::int64_t>(fieldNames_.size())) {
        return Variant(std::string());
    }
    return Variant(fieldNames_[at]);
}

std::int32_t CSVfile::FieldCheck(std::string_view names) const {
    if (names.empty()) {
        return 0;
    }
    std::int32_t present = 0;
    for (const std::string& piece : split(names, separator_)) {
        const std::string name = trim(Unquote(piece));
        if (name.empty()) {
            continue;
        }
        for (std::int32_t i = 1; i <= fieldNameCount_; ++i) {
            if (FieldName(i).toText() == name) {
                ++present;
                break;
            }
        }
    }
    return present;
}

Variant CSVfile::Field(FieldKey field, std::int32_t line) {
    const std::int64_t p = LineIndex(line);
    if (p < 0) {
        return Variant(std::string());
    }
    const std::int32_t c = FieldNameIndex(field);
    if (c < 0 || isBlankLine(p)) {
        return Variant(std::string());
    }
    if (p != cachedLine_) {
        fieldCache_.assign(physicalLine(p), separator_);
        cachedLine_ = p;
    }
    const auto piece = fieldCache_.piece(static_cast<std::size_t>(c));
    std::string value = piece ? unquoteValue(*piece) : std::string();
    if (value.empty()) {
        return Variant::null();
    }
    return Variant(std::move(value));
}

std::string CSVfile::FieldStr(FieldKey field, std::int32_t line) {
    return Field(field, line).toText();
}

bool CSVfile::FieldBool(FieldKey field, std::int32_t line) {
    // Only numbers count: the words for true and false are no numbers and give false.
    const auto number = regional::parseNumber(FieldStr(field, line));
    return number && *number != 0;
}

std::int32_t CSVfile::FieldLong(FieldKey field, std::int32_t line) {
    const auto number = regional::parseNumber(FieldStr(field, line));
    return number ? regional::toLong(*number) : 0;
}

std::int16_t CSVfile::FieldInt(FieldKey field, std::int32_t line) {
    const auto number = regional::parseNumber(FieldStr(field, line));
    return number ? regional::toInteger(*number) : std::int16_t{0};
}

Currency CSVfile::FieldCur(FieldKey field, std::int32_t line) {
    return regional::parseCurrency(FieldStr(field, line)).value_or(Currency{});
}

Date CSVfile::FieldDateTime(FieldKey field, std::int32_t line) {
    return regional::parseDate(FieldStr(field, line)).value_or(Date{});
}

// Dates before 1899 count their time of day away from the day, as the serial format does:
// -1.25 is 29 December 1899, 06:00. So whole days are truncated, not floored.
Date CSVfile::FieldDate(FieldKey field, std::int32_t line) {
    return Date{std::trunc(FieldDateTime(field, line).serial)};
}

Date CSVfile::FieldTime(FieldKey field, std::int32_t line) {
    const double serial = FieldDateTime(field, line).serial;
    return Date{std::fabs(serial - std::trunc(serial))};
}

} // namespace wordbm
