#pragma once

#include <string>
#include <unordered_set>

namespace wordbm {

// The invoice names one merge run has given out, so that no invoice replaces another of the same
// run or one of the run's own input files. Names are compared without their extension (the PDF
// takes the same name) and ignoring letter case (the folder may lie on a share that ignores it).
class OutputNames {
public:
    // A file the run must never write, such as the form or the control file.
    void reserve(const std::string& path);
    // False when the name (a native path) is taken; otherwise it is taken from now on.
    bool claim(const std::string& path);

private:
    static std::string key(const std::string& path, bool withExtension);

    std::unordered_set<std::string> taken_;
    std::unordered_set<std::string> reserved_;
};

} // namespace wordbm
