// The merge run and the file-name test of the engine.
#include "engine/BookmarkFiller.h"
#include "engine/MergeRun.h"
#include "engine/WordBM.h"
#include "support/FileOps.h"

#include <filesystem>
#include <system_error>

namespace wordbm {

void WordBM::mfWBM_Merge(bool testOnly) {
    if (!CheckDoc(true)) {
        return;
    }
    MergeChoices choices;
    if (!testOnly) {
        const std::optional<MergeChoices> chosen = ui_.mergeChoicesDialog(options_);
        if (!chosen) {
            return;
        }
        choices = *chosen;
        // A deleted invoice cannot stay open.
        choices.Close = choices.Close || choices.Delete;
    }
    MergeRun(*this, choices, testOnly).run();
}

void WordBM::mfWBM_Test() {
    mfWBM_Merge(true);
}

void WordBM::BookmarksFill(std::int32_t row) {
    if (!CheckDoc()) {
        return;
    }
    // What could not be filled is listed by the merge run, which fills through its own filler.
    BookmarkFiller(fields_, csv_, coder_, qrImage_, slip_.get(), [this] {
        ui_.processEvents();
    }).fill(*word_, *doc_, row);
}

bool WordBM::DocFolderCheck(const std::string& docPath) {
    const std::string path = FileNameTemplate::nativeDocPath(docPath);
    const auto slash = path.rfind('/');
    if (slash == std::string::npos) {
        return true; // the current folder
    }
    const std::string folder = slash == 0 ? std::string("/") : path.substr(0, slash);
    if (folderExists(folder)) {
        return true;
    }
    std::error_code ignored;
    std::filesystem::create_directory(folder, ignored);
    return folderExists(folder);
}

} // namespace wordbm
