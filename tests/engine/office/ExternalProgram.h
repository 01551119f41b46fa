#pragma once

#include <string>
#include <vector>

// What a helper program (pdftotext, pdffonts, lpadmin ...) printed and how it ended.
struct ProgramOutput {
    int exitStatus = -1; // -1 when it could not be started or was killed
    std::string standardOutput;
};

// Runs argv[0] (looked up in PATH) with the arguments and waits for it; stderr is passed on.
ProgramOutput runProgram(const std::vector<std::string>& argv);

// Text of a PDF as pdftotext reads it (UTF-8, reading order).
std::string pdfText(const std::string& pdfPath);
