#pragma once

#include <string>

namespace wordbm {

// Where the program's own files are. The build tree keeps them beside the program (build/src/app);
// an installation keeps them where Debian wants them, found relative to the program, so that an
// installed tree works wherever it is unpacked: <prefix>/bin/wordbm finds its pictures and samples in
// <prefix>/share/wordbm and its helper programs in <prefix>/libexec/wordbm.

// A data file or folder by name ("img"): beside the program when it is there, else the installed one.
std::string ProgramDataPath(const std::string& name);

// A helper program by name: beside the program when it is there, else the installed one.
std::string ProgramHelperPath(const std::string& name);

} // namespace wordbm
