#pragma once

#include "settings/OrderedNoCaseMap.h"

#include <string>
#include <vector>

namespace wordbm {

// A sectioned settings file: "[name]" header lines and "key=value" entry lines, read and written
// as ANSI (cp1252) text with CR LF. Sections and keys compare ignoring letter case and keep the
// order of insertion. There is no comment syntax. Never throws; unreadable files read as empty.
class IniFile4 {
public:
    const std::string& FilePath() const { return filePath_; }
    // Setting the path reads that file at once.
    void FilePath(const std::string& path);

    void Clear();
    // An empty path reads the current FilePath.
    void ReadFile(const std::string& path = {});

    // The lines of the section, header first; the section is created when absent.
    std::vector<std::string> Section(const std::string& name);
    // Drops a whole section (the settings store needs it to delete one).
    void RemoveSection(const std::string& name);

    void Value(const std::string& section, const std::string& key, const std::string& value);
    std::string Value(const std::string& section, const std::string& key) const;
    std::string ValueFull(const std::string& section, const std::string& key) const;

    // An empty path writes to the current FilePath. With overwrite false an existing file stays.
    void WriteFile(const std::string& path, bool overwrite);
    std::string Stream() const;

    void Delete() const;
    bool Exists() const;

private:
    // Lines of one section; the header sits under the key "_", so an entry named "_" can't be added.
    using Lines = OrderedNoCaseMap<std::string>;

    Lines& ensureSection(const std::string& name);
    void readLine(std::string_view rawLine);

    std::string filePath_;
    std::string currentSection_;
    bool sectionSeen_ = false;
    OrderedNoCaseMap<Lines> sections_;
};

} // namespace wordbm
