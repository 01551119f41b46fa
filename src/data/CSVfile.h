#pragma once

#include "data/ControlFileText.h"
#include "data/FieldCache.h"
#include "data/FieldKey.h"
#include "support/Currency.h"
#include "support/Date.h"
#include "support/Variant.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace wordbm {

// Reader of the billing run's control file ("Rechnungs-Steuerdatei"): a header row of field
// names, then one invoice per line. Read-only; never throws except for conversion overflow in
// the typed accessors. Its parsing is deliberately plain (split at the separator, then unquote
// each piece), limits included. Data lines are numbered from 1.
class CSVfile {
public:
    // Reads the file (cp1252, lines end in CR LF only). An omitted argument takes its default
    // (";", the double quote, true, 0, 0); a given one is converted as the classic Variant would
    // be, so a null separator becomes "". An unreadable file reads as an empty one. Kept on purpose:
    // read without a header (or too short for one), the previous file's field names stay.
    void ReadFile(const std::string& path, const std::optional<Variant>& separator = std::nullopt,
                  const std::optional<Variant>& delimiter = std::nullopt,
                  const std::optional<Variant>& withFieldNames = std::nullopt,
                  const std::optional<Variant>& skipColumns = std::nullopt,
                  const std::optional<Variant>& skipLines = std::nullopt);

    const std::string& FilePath() const { return path_; }
    const std::string& Separator() const { return separator_; }
    // Stored and reported only: values are always unquoted with the double quote.
    const std::string& Delimiter() const { return delimiter_; }
    bool WithFieldNames() const { return withFieldNames_; }
    // Data lines; -1 for an empty file with header. Anything below 1 means no invoices.
    std::int32_t LineCount() const { return lineCount_; }
    // The raw physical line of data line `line`; "" when there is no such line.
    std::string Line(std::int32_t line) const;

    std::int32_t FieldNameCount() const { return fieldNameCount_; }
    // 0-based position of the field in a split line; -1 when unknown.
    std::int32_t FieldNameIndex(FieldKey field) const;
    // The field's header name as a String; "" when unknown.
    Variant FieldName(FieldKey field) const;
    // How many of the names (joined by the separator) the header holds; repeats count again.
    std::int32_t FieldCheck(std::string_view names) const;

    // A non-empty String, Null for an empty or missing field of an existing line, or "" for an
    // unknown field or line (and for every field of a blank line).
    Variant Field(FieldKey field, std::int32_t line);
    std::string FieldStr(FieldKey field, std::int32_t line);
    bool FieldBool(FieldKey field, std::int32_t line);
    std::int32_t FieldLong(FieldKey field, std::int32_t line); // throws OverflowError
    std::int16_t FieldInt(FieldKey field, std::int32_t line);  // throws OverflowError
    Currency FieldCur(FieldKey field, std::int32_t line);      // throws OverflowError
    Date FieldDateTime(FieldKey field, std::int32_t line);
    Date FieldDate(FieldKey field, std::int32_t line);
    Date FieldTime(FieldKey field, std::int32_t line);

private:
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>{}(name); }
    };
    using NameIndex = std::unordered_map<std::string, std::int32_t, NameHash, std::equal_to<>>;

    void LoadLines();
    void ParseHeader();
    void dropFieldNames();
    void indexFieldNames();
    // Physical index of data line n, -1 when there is none.
    std::int64_t LineIndex(std::int32_t n) const;
    // The physical line `index` in UTF-8; "" when there is none.
    std::string physicalLine(std::int64_t index) const;
    bool isBlankLine(std::int64_t index);

    std::string path_;
    // Shared by copies: the threads of a merge each take one, and it is never changed in place.
    std::shared_ptr<const ControlFileText> text_ = ControlFileText::empty();
    // Each copy reads through a window of its own.
    mutable ControlFileText::Window window_;
    std::int32_t lineCount_ = 0;
    std::string separator_ = ";";
    std::string delimiter_ = "\"";
    bool withFieldNames_ = true;
    std::vector<std::string> fieldNames_;
    NameIndex firstIndexOfName_;
    std::int32_t fieldNameCount_ = 0;
    std::int32_t skipColumns_ = 0;
    std::int32_t skipLines_ = 0;
    std::int64_t cachedLine_ = 0;
    FieldCache fieldCache_;
    std::int64_t blankCheckedLine_ = -1;
    bool blankCheckedResult_ = false;
};

} // namespace wordbm
