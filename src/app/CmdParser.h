#pragma once

#include "support/Variant.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace wordbm {

// Splits one command text into positional arguments and switches ("/w value"), checks them
// against the declared ones and answers queries by 1-based position or by name. Every write of a
// parsing rule parses the current text again. Lists hold 30 entries; a 31st throws IndexError.
class CmdParser {
public:
    static constexpr std::int16_t Capacity = 30;

    CmdParser() { Clear(); }

    const std::string& Cmd() const { return cmd_; }
    void Cmd(std::string_view text);
    // The text after the program name, rebuilt from argv; arguments that are empty or hold a
    // blank are enclosed in double quotes (inner ones doubled).
    void CmdGet(int argc, const char* const* argv);
    void CmdGet(const std::vector<std::string>& arguments);
    void Clear() { Cmd(""); }

    std::string Parsing(std::string_view Prefix = "") const;
    std::string Status(std::string_view Prefix = "") const;

    std::int16_t ArgCount() const { return static_cast<std::int16_t>(argValues_.size()); }
    const std::string& ArgDelim() const { return argDelim_; }
    void ArgDelim(std::string_view delimiter);
    bool ArgDelimStrip() const { return argDelimStrip_; }
    void ArgDelimStrip(bool strip);
    bool ArgNoSplit() const { return argNoSplit_; }
    void ArgNoSplit(bool noSplit);
    Variant ArgVal(const Variant& IndexOrName) const;
    void ArgAdd(std::string_view name);

    std::int16_t SwCount() const { return static_cast<std::int16_t>(swNames_.size()); }
    const std::string& SwChars() const { return swChars_; }
    void SwChars(std::string_view characters);
    Variant SwName(std::int16_t index) const;
    Variant SwVal(const Variant& SwName) const;
    std::int16_t SwIsHere(std::string_view SwName) const;
    void SwAdd(std::string_view SwName);
    bool SwBad() const;

private:
    // Outcome of reading one switch: the text ended, or reading may go on.
    enum class Step { End, More };

    void parse();
    void readArguments();
    void readArgument();
    Step readSwitch();
    std::size_t skipBlanks();
    static void append(std::vector<std::string>& list, std::string entry);
    static std::int16_t position(const std::vector<std::string>& list, std::string_view name);
    bool declaredSwitch(const std::string& name) const;

    std::string cmd_;
    std::string argDelim_ = "\"";
    bool argDelimStrip_ = true;
    bool argNoSplit_ = false;
    std::string swChars_ = "/";
    // The first switch character met; later switches must use the same one (kept across parses).
    std::string swInUse_;

    std::vector<std::string> argNames_;
    std::vector<std::string> swDeclared_;
    std::vector<std::string> argValues_;
    std::vector<std::string> swNames_;
    std::vector<std::string> swValues_;
    std::size_t pos_ = 0; // 0-based; a long line must not overflow a 16-bit position
};

} // namespace wordbm
