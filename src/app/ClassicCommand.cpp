#include "app/ClassicCommand.h"

#include "app/ClassicArgs.h"
#include "app/CmdParser.h"
#include "app/Version.h"

#include <cstdio>

namespace wordbm {

namespace {

std::string trim(const std::string& text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos) {
        return {};
    }
    const auto last = text.find_last_not_of(" \t");
    return text.substr(first, last - first + 1);
}

// The value of a switch as the engine gets it: a path with blanks arrives without its quotes.
std::string unquote(const std::string& value) {
    std::string text = trim(value);
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        text = text.substr(1, text.size() - 2);
    } else if (!text.empty() && text.front() == '"') {
        text.erase(0, 1);
    } else if (!text.empty() && text.back() == '"') {
        text.pop_back();
    }
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        result += text[i];
        if (text[i] == '"' && i + 1 < text.size() && text[i + 1] == '"') {
            ++i;
        }
    }
    return result;
}

// A quoted argument with a blank is quoted once more on its way into the parser's line, so its own
// quotes come out doubled: a value still enclosed in quotes after unquoting loses them as well.
std::string switchValue(const std::string& value) {
    std::string text = unquote(value);
    const bool enclosed = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return enclosed ? unquote(text) : text;
}

} // namespace

ClassicCommand ClassicCommand::read(int argc, const char* const* argv) {
    ClassicCommand command;
    const ClassicArgs mapped = mapClassicArgs(argc, argv);
    CmdParser parser;
    for (const char* name : {"w", "c", "t", "m", "?"}) {
        parser.SwAdd(name);
    }
    parser.SwChars(mapped.switchChars);
    parser.CmdGet(mapped.arguments);
    // A faulty line gets the plain help box; the parser's error text is not shown.
    if (!parser.Status("").empty() || parser.SwIsHere("?") != 0) {
        command.help = true;
        return command;
    }
    command.Template = switchValue(parser.SwVal("t").toText());
    command.CSVDoc = switchValue(parser.SwVal("c").toText());
    command.WordDoc = switchValue(parser.SwVal("w").toText());
    command.mergePage = parser.SwIsHere("m") != 0;
    return command;
}

std::string ClassicCommand::helpText(const std::string& program) {
    char version[64];
    std::snprintf(version, sizeof version, "Version (%02d.%02d.%03d - %s)", version::Major, version::Minor,
                  version::Revision, version::ReleaseDate);
    return std::string(version::Title) + "\r\nCommand Line Interface\r\n" + version +
           "\r\n\r\nSyntax: " + program + "  [/w <word-file>] [/c <csv-file>] [/t <template>] [/m] [/?]";
}

std::string ClassicCommand::programName(const char* argv0) {
    std::string name = argv0 ? argv0 : "wordbm";
    const auto slash = name.find_last_of("/\\");
    if (slash != std::string::npos) {
        name.erase(0, slash + 1);
    }
    const auto dot = name.find_last_of('.');
    if (dot != std::string::npos && dot > 0) {
        name.erase(dot);
    }
    return name;
}

} // namespace wordbm
