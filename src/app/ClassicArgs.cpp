#include "app/ClassicArgs.h"

#include <optional>
#include <string_view>

namespace wordbm {

namespace {

// Candidates for the switch character, in the order of preference; the control characters
// never occur in real paths or templates.
constexpr std::string_view SwitchCandidates = "/-\x1F\x1E\x1D\x1C";

struct Token {
    bool isSwitch = false;
    std::string text; // the switch name or the value
};

bool isSwitchMark(char c) {
    return c == '/' || c == '-';
}

// A switch name is one character that the parser would not take for a separator or a mark.
bool isSwitchName(char c) {
    return c != ' ' && c != '=' && c != '"' && !isSwitchMark(c);
}

std::optional<char> switchName(std::string_view token) {
    if (token == "-h" || token == "--help" || token == "-?" || token == "/?") {
        return '?';
    }
    const bool marked = token.size() >= 2 && isSwitchMark(token[0]) && isSwitchName(token[1]);
    if (marked && (token.size() == 2 || token[2] == '=')) {
        return token[1];
    }
    return std::nullopt;
}

void addTokens(std::vector<Token>& tokens, std::string_view argument) {
    const std::optional<char> name = switchName(argument);
    if (!name) {
        tokens.push_back({false, std::string(argument)});
        return;
    }
    tokens.push_back({true, std::string(1, *name)});
    if (argument.size() > 2 && argument[2] == '=') {
        tokens.push_back({false, std::string(argument.substr(3))});
    }
}

char freeSwitchChar(const std::vector<Token>& tokens) {
    for (const char candidate : SwitchCandidates) {
        bool used = false;
        for (const Token& token : tokens) {
            used = used || token.text.find(candidate) != std::string::npos;
        }
        if (!used) {
            return candidate;
        }
    }
    return '/'; // every candidate taken: only hostile input gets here, values are cut then
}

} // namespace

ClassicArgs mapClassicArgs(int argc, const char* const* argv) {
    std::vector<Token> tokens;
    for (int i = 1; i < argc && argv != nullptr; ++i) {
        if (argv[i] != nullptr) {
            addTokens(tokens, argv[i]);
        }
    }
    ClassicArgs result;
    const char mark = freeSwitchChar(tokens);
    result.switchChars = std::string(1, mark);
    for (Token& token : tokens) {
        result.arguments.push_back(token.isSwitch ? mark + token.text : std::move(token.text));
    }
    return result;
}

} // namespace wordbm
