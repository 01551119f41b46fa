#include "app/CmdParser.h"

#include "support/Errors.h"
#include "support/Regional.h"
#include "support/Strings.h"

#include <algorithm>
#include <optional>

namespace wordbm {

namespace {

constexpr std::string_view LineBreak = "\r\n";

bool isIndex(const Variant& indexOrName) {
    return indexOrName.isNumber() || (indexOrName.isString() && regional::isNumeric(indexOrName.toText()));
}

// The 0-based entry a numeric variant names, rounded as whole-number conversions round.
std::optional<std::size_t> entryAt(const Variant& index, std::size_t count) {
    const std::optional<double> number = regional::parseNumber(index.toText());
    if (!number) {
        return std::nullopt;
    }
    const double rounded = regional::roundHalfEven(*number);
    if (!(rounded >= 1.0 && rounded <= static_cast<double>(count))) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(rounded) - 1;
}

void appendLine(std::string& text, const std::string& line) {
    if (!text.empty()) {
        text += LineBreak;
    }
    text += line;
}

} // namespace

void CmdParser::Cmd(std::string_view text) {
    cmd_ = trim(text);
    parse();
}

void CmdParser::CmdGet(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    for (int i = 1; i < argc && argv != nullptr; ++i) {
        if (argv[i] != nullptr) {
            arguments.emplace_back(argv[i]);
        }
    }
    CmdGet(arguments);
}

void CmdParser::CmdGet(const std::vector<std::string>& arguments) {
    std::string text;
    for (const std::string& argument : arguments) {
        if (!text.empty()) {
            text += ' ';
        }
        // Quoted so that the blanks stay inside one value and an empty argument stays visible.
        const bool quote = argument.empty() || argument.find(' ') != std::string::npos;
        text += quote ? Quote(argument) : argument;
    }
    Cmd(text);
}

void CmdParser::ArgDelim(std::string_view delimiter) {
    argDelim_ = delimiter;
    parse();
}

void CmdParser::ArgDelimStrip(bool strip) {
    argDelimStrip_ = strip;
    parse();
}

void CmdParser::ArgNoSplit(bool noSplit) {
    argNoSplit_ = noSplit;
    parse();
}

void CmdParser::SwChars(std::string_view characters) {
    swChars_ = characters;
    // A remembered switch character that is no longer allowed would hide every switch.
    if (!swInUse_.empty() && swChars_.find(swInUse_) == std::string::npos) {
        swInUse_.clear();
    }
    parse();
}

void CmdParser::ArgAdd(std::string_view name) {
    append(argNames_, trim(name));
}

void CmdParser::SwAdd(std::string_view SwName) {
    append(swDeclared_, trim(SwName));
}

void CmdParser::append(std::vector<std::string>& list, std::string entry) {
    if (list.size() >= static_cast<std::size_t>(Capacity)) {
        throw IndexError();
    }
    list.push_back(std::move(entry));
}

void CmdParser::parse() {
    argValues_.clear();
    swNames_.clear();
    swValues_.clear();
    pos_ = 0;
    if (cmd_.empty()) {
        return;
    }
    readArguments();
    while (readSwitch() == Step::More) {
    }
}

std::size_t CmdParser::skipBlanks() {
    while (pos_ < cmd_.size() && cmd_[pos_] == ' ') {
        ++pos_;
    }
    return pos_;
}

void CmdParser::readArguments() {
    while (skipBlanks() < cmd_.size() && swChars_.find(cmd_[pos_]) == std::string::npos) {
        readArgument();
    }
    if (argNoSplit_ && !argValues_.empty()) {
        // The blanks before the first switch only separate; they are not part of the argument.
        std::string whole = trimRight(std::string_view(cmd_).substr(0, pos_));
        argValues_.clear();
        argValues_.push_back(std::move(whole));
    }
}

void CmdParser::readArgument() {
    const char first = cmd_[pos_];
    if (argDelim_.find(first) == std::string::npos) {
        const std::size_t end = std::min(cmd_.find(' ', pos_), cmd_.size());
        append(argValues_, cmd_.substr(pos_, end - pos_));
        pos_ = end;
        return;
    }
    // An unclosed delimiter runs to the end of the text.
    std::string value;
    for (++pos_; pos_ < cmd_.size(); ++pos_) {
        if (cmd_[pos_] == first) {
            if (pos_ + 1 < cmd_.size() && cmd_[pos_ + 1] == first) {
                value += first;
                ++pos_;
                continue;
            }
            ++pos_;
            break;
        }
        value += cmd_[pos_];
    }
    append(argValues_, argDelimStrip_ ? value : Quote(value, std::string(1, first)));
}

CmdParser::Step CmdParser::readSwitch() {
    if (skipBlanks() >= cmd_.size()) {
        return Step::End;
    }
    const std::string& allowed = swInUse_.empty() ? swChars_ : swInUse_;
    if (allowed.find(cmd_[pos_]) == std::string::npos) {
        ++pos_;
        return Step::More;
    }
    if (swInUse_.empty()) {
        swInUse_ = cmd_[pos_];
    }
    if (++pos_ >= cmd_.size()) {
        return Step::End;
    }
    if (cmd_[pos_] == ' ' || cmd_[pos_] == swInUse_[0]) {
        return Step::More; // a lone switch character
    }
    const std::size_t nameEnd = std::min(cmd_.find_first_of(swInUse_ + " =", pos_), cmd_.size());
    append(swNames_, cmd_.substr(pos_, nameEnd - pos_));
    pos_ = nameEnd;
    // Only a blank or "=" separates name and value; "/w/c" is two switches.
    if (pos_ < cmd_.size() && (cmd_[pos_] == ' ' || cmd_[pos_] == '=')) {
        ++pos_;
    }
    const std::size_t valueEnd = std::min(cmd_.find(swInUse_[0], pos_), cmd_.size());
    swValues_.push_back(trim(std::string_view(cmd_).substr(pos_, valueEnd - pos_)));
    pos_ = valueEnd;
    return Step::More;
}

std::int16_t CmdParser::position(const std::vector<std::string>& list, std::string_view name) {
    const std::string wanted = trim(name);
    const auto found = std::find(list.begin(), list.end(), wanted);
    return found == list.end() ? std::int16_t{0} : static_cast<std::int16_t>(found - list.begin() + 1);
}

bool CmdParser::declaredSwitch(const std::string& name) const {
    return position(swDeclared_, name) != 0;
}

bool CmdParser::SwBad() const {
    return std::any_of(swNames_.begin(), swNames_.end(),
                       [this](const std::string& name) { return !declaredSwitch(name); });
}

Variant CmdParser::ArgVal(const Variant& IndexOrName) const {
    std::optional<std::size_t> entry;
    if (isIndex(IndexOrName)) {
        entry = entryAt(IndexOrName, argValues_.size());
    } else if (const std::int16_t declared = position(argNames_, IndexOrName.toText());
               declared > 0 && static_cast<std::size_t>(declared) <= argValues_.size()) {
        entry = static_cast<std::size_t>(declared - 1);
    }
    return entry ? Variant(argValues_[*entry]) : Variant::null();
}

Variant CmdParser::SwName(std::int16_t index) const {
    if (index < 1 || index > SwCount()) {
        return Variant::null();
    }
    return Variant(swNames_[static_cast<std::size_t>(index - 1)]);
}

Variant CmdParser::SwVal(const Variant& SwName) const {
    std::optional<std::size_t> entry;
    if (isIndex(SwName)) {
        entry = entryAt(SwName, swValues_.size());
    } else if (const std::int16_t found = SwIsHere(SwName.toText()); found > 0) {
        entry = static_cast<std::size_t>(found - 1);
    }
    return entry ? Variant(swValues_[*entry]) : Variant::null();
}

std::int16_t CmdParser::SwIsHere(std::string_view SwName) const {
    return position(swNames_, SwName);
}

std::string CmdParser::Status(std::string_view Prefix) const {
    std::string text;
    const std::string prefix(Prefix);
    if (argValues_.size() < argNames_.size()) {
        text = prefix + "argument(s) missing";
    }
    if (argValues_.size() > argNames_.size()) {
        text = prefix + "too many arguments";
    }
    if (SwBad()) {
        appendLine(text, prefix + "bad switch(es)");
    }
    return text;
}

std::string CmdParser::Parsing(std::string_view Prefix) const {
    const std::string prefix(Prefix);
    std::string text = prefix + "CmdLine=" + cmd_;
    const std::size_t args = std::max(argValues_.size(), argNames_.size());
    for (std::size_t i = 0; i < args; ++i) {
        const std::string name = i < argNames_.size() ? argNames_[i] : "???";
        const std::string value = i < argValues_.size() ? argValues_[i] : std::string();
        appendLine(text, prefix + "Arg(" + std::to_string(i + 1) + ":" + name + ")=" + value);
    }
    for (std::size_t i = 0; i < swNames_.size(); ++i) {
        std::string line = prefix + "Switch(" + std::to_string(i + 1) + ":" + swNames_[i];
        line += declaredSwitch(swNames_[i]) ? ")"
                                            : ":???"
                                              ")";
        if (!swValues_[i].empty()) {
            line += "=" + swValues_[i];
        }
        appendLine(text, line);
    }
    return text;
}

} // namespace wordbm
