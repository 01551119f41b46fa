// The control file reader on any bytes: read as the merge reads it and without a header, every
// accessor on every field of the first lines gives a value or the documented overflow; the hints
// about how the file was saved are found without harm.
#include "ScratchFile.h"
#include "data/CSVfile.h"
#include "data/ControlFileHints.h"
#include "support/Errors.h"

#include <algorithm>

using namespace wordbm;

namespace {

// Enough lines and columns to reach every branch; a long file only repeats them.
constexpr std::int32_t MaxLines = 6;
constexpr std::int32_t MaxFields = 12;

template <typename Read> void readValue(Read read) {
    try {
        read();
    } catch (const OverflowError&) {
        // A number too large for its type: the caller is told, as documented.
    }
}

void readField(CSVfile& file, FieldKey field, std::int32_t line) {
    file.Field(field, line);
    file.FieldStr(field, line);
    file.FieldBool(field, line);
    readValue([&] { file.FieldLong(field, line); });
    readValue([&] { file.FieldInt(field, line); });
    readValue([&] { file.FieldCur(field, line); });
    file.FieldDateTime(field, line);
    file.FieldDate(field, line);
    file.FieldTime(field, line);
}

void readEverything(CSVfile& file) {
    const std::int32_t fields = std::min(file.FieldNameCount(), MaxFields);
    const std::int32_t lines = std::min(file.LineCount(), MaxLines);
    file.FieldCheck(file.Line(0));
    for (std::int32_t line = 0; line <= lines + 1; ++line) {
        file.Line(line);
        for (std::int32_t field = 0; field <= fields + 1; ++field) {
            readField(file, field, line);
            const std::string name = file.FieldName(field).toText();
            readField(file, name, line);
            file.FieldNameIndex(name);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFile scratch("Rechnungslauf.csv");
    scratch.write(data, size);
    ControlFileHints::of(std::string_view(reinterpret_cast<const char*>(data), size));
    CSVfile file;
    file.ReadFile(scratch.path());
    readEverything(file);
    // The reader's other settings, on the same object, as a second file is read.
    file.ReadFile(scratch.path(), Variant(","), Variant("'"), Variant(false), Variant(std::int32_t{1}),
                  Variant(std::int32_t{1}));
    readEverything(file);
    return 0;
}
