#pragma once

#include <string>
#include <vector>

namespace wordbm {

// The classic switches "/w /c /t /m /?" taken from argv for CmdParser.
//
// CmdParser cuts a switch value at the next switch character anywhere in the text, so with "/"
// an absolute path like "/home/u/x.docx" would fall apart. The mapping therefore decides per
// token what is a switch: "/x" and "-x" (one character after the mark), "/x=value" and
// "-x=value", and "-h", "--help", "-?" as "/?". Every other token is a value, even when it
// begins with "/" or "-". The switches are then written with a switch character that no value
// contains: "/" when it is free, else "-", else a control character. So
//   wordbm /w /home/u/x.docx /c /tmp/a-b.csv /m
// becomes the text "\x1Fw /home/u/x.docx \x1Fc /tmp/a-b.csv \x1Fm" with SwChars "\x1F", and
//   wordbm -w "/home/u/my form.docx"
// becomes "-w \"/home/u/my form.docx\"" with SwChars "-" (the entry unquotes values).
// A value that is exactly "-x" must be written "/t=-x" to be taken as a value.
struct ClassicArgs {
    std::vector<std::string> arguments; // for CmdParser::CmdGet
    std::string switchChars;            // for CmdParser::SwChars, set before CmdGet
};

ClassicArgs mapClassicArgs(int argc, const char* const* argv);

} // namespace wordbm
