// The classic command line on any words: the window run's reading of argv, and the parser itself
// on any text with any switch characters, answer or throw only the documented IndexError.
#include "InputPieces.h"
#include "app/ClassicCommand.h"
#include "app/CmdParser.h"
#include "support/Errors.h"

using namespace wordbm;

namespace {

void askEverything(const CmdParser& parser) {
    parser.Status("");
    parser.Parsing("");
    for (std::int16_t i = 0; i <= parser.ArgCount() + 1; ++i) {
        parser.ArgVal(Variant(i));
    }
    for (std::int16_t i = 0; i <= parser.SwCount() + 1; ++i) {
        const Variant name = parser.SwName(i);
        parser.SwVal(name);
        parser.SwIsHere(name.toText());
    }
    parser.SwBad();
}

// The first word gives the switch characters, the rest the command text.
void parseText(const std::vector<std::string>& words) {
    CmdParser parser;
    for (const char* name : {"w", "c", "t", "m", "?"}) {
        parser.SwAdd(name);
    }
    parser.SwChars(words.front());
    std::string text;
    for (std::size_t i = 1; i < words.size(); ++i) {
        text += (i > 1 ? " " : "") + words[i];
    }
    parser.Cmd(text);
    askEverything(parser);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<std::string> words = inputPieces(data, size);
    std::vector<const char*> argv{"wordbm"};
    for (const auto& word : words) {
        argv.push_back(word.c_str());
    }
    try {
        ClassicCommand::read(static_cast<int>(argv.size()), argv.data());
    } catch (const IndexError&) {
        // More than 30 arguments or switches: the parser's lists are full.
    }
    try {
        parseText(words);
    } catch (const IndexError&) {
    }
    return 0;
}
