// The file-name mask on any text, with any control file (the two separated by a NUL byte): every
// row gets a name, and no value from the control file leads its invoice out of the mask's folder.
#include "InputPieces.h"
#include "ScratchFile.h"
#include "data/CSVfile.h"
#include "engine/merge/OutputNames.h"
#include "names/FileNameTemplate.h"
#include "names/MaskStore.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace wordbm;

namespace {

class KeptMask final : public MaskStore {
public:
    std::string load() override { return mask; }
    void save(const std::string& text) override { mask = text; }
    std::string mask;
};

std::size_t separators(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return c == '/' || c == '\\'; }));
}

// The form and the control file are named without folders, so &W& and &C& are empty, and without
// variables (whose values may hold folders) every separator of a name is one the mask holds itself.
bool staysInFolder(const std::string& mask, const std::string& name, bool variables) {
    return variables || separators(name) == separators(mask);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFile scratch("Rechnungslauf.csv");
    const std::vector<std::string> pieces = inputPieces(data, size);
    scratch.write(pieces.size() > 1 ? pieces[1] : std::string());

    KeptMask store;
    FileNameTemplate mask(store, nullptr);
    mask.WordPath("Rechnung.docx");
    mask.Template(pieces[0]);
    mask.DocName(1);                   // the test values, before a control file is given
    mask.CSVPath("Rechnungslauf.csv"); // the data comes from `control` below
    CSVfile control;
    control.ReadFile(scratch.path());

    const bool variables = std::find(data, data + size, '%') != data + size;
    OutputNames names;
    names.reserve(mask.WordPath());
    names.reserve(scratch.path());
    for (std::int32_t line = 0; line <= std::min(control.LineCount(), 20) + 1; ++line) {
        const std::string name = mask.DocName(line, control);
        if (!staysInFolder(mask.Template(), name, variables)) {
            std::fprintf(stderr, "the name %s left the folders of the mask %s\n", name.c_str(),
                         mask.Template().c_str());
            std::abort();
        }
        names.claim(FileNameTemplate::nativeDocPath(name));
    }
    mask.Tini();
    return 0;
}
