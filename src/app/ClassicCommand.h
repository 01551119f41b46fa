#pragma once

#include <string>

namespace wordbm {

// The classic command line "/w /c /t /m /?" as the window run reads it: either the help box is
// due, or the three paths and the merge-page flag for the engine.
struct ClassicCommand {
    bool help = false; // a faulty line or "/?": show the help box and end
    std::string Template;
    std::string CSVDoc;
    std::string WordDoc;
    bool mergePage = false;

    // Reads argv (program name first). Values are trimmed and lose one pair of enclosing double
    // quotes, doubled inner quotes becoming single ones.
    static ClassicCommand read(int argc, const char* const* argv);
    // The help box text, lines joined by CR LF; program is the executable's name.
    static std::string helpText(const std::string& program);
    // The executable's name without folder or extension.
    static std::string programName(const char* argv0);
};

} // namespace wordbm
