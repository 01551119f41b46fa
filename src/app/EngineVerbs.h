#pragma once

#include "engine/ports/MergeChoices.h"

#include <iosfwd>
#include <string>

namespace wordbm {

class TerminalUserInterface;
class WordBM;

// The batch verbs that run the engine's commands on a form: analyze, convert, reset, verify and
// merge. Each opens working copies (in the working folder, as the window does), answers every
// question with Yes, prints the boxes and results the window would show, and never writes the
// form or the control file it was given. Each returns the process exit code: 0 all went well,
// 1 the command ran but something failed or it was stopped, 2 the input could not be used.
class EngineVerbs {
public:
    struct MergeRequest {
        std::string form;
        std::string csv;
        // "" takes the remembered mask, or the first standard mask.
        std::string mask;
        // When set, the invoices go into this folder under the file-name part of the mask.
        std::string outFolder;
        MergeChoices choices;
        bool testOnly = false;
        // Invoices made side by side; 0 for one per core.
        int jobs = 0;
    };

    static constexpr int ExitFine = 0;
    static constexpr int ExitFailed = 1;
    static constexpr int ExitUnusable = 2;

    EngineVerbs(std::ostream& out, std::ostream& err, bool progressBar)
        : out_(out), err_(err), bar_(progressBar) {}

    int analyze(const std::string& form, bool trace);
    // All known merge fields to bookmarks, without asking for each.
    int convert(const std::string& form, const std::string& output);
    int reset(const std::string& form, const std::string& output);
    int verify(const std::string& form, const std::string& output);
    int merge(const MergeRequest& request);

    // "dir" + "\" + the file-name part of the mask, which the mask's tags fill in as before.
    static std::string maskInFolder(const std::string& mask, const std::string& folder);

private:
    enum class Edit { Convert, Reset, Verify };

    int edit(const std::string& form, const std::string& output, Edit command);
    bool sameFile(const std::string& a, const std::string& b) const;
    bool saveAs(WordBM& engine, const std::string& output);

    std::ostream& out_;
    std::ostream& err_;
    bool bar_;
};

} // namespace wordbm
