#pragma once

#include <map>
#include <string>
#include <vector>

namespace wordbm::testing {

// A control file for a test, cut from the sample billing run (examples/Rechnungslauf.csv, all 55
// columns, valid QR-bill data) and written as the export writes it: cp1252, CR LF.
class ControlFile {
public:
    // Data lines of the sample to keep, counted from 1, in the order given.
    explicit ControlFile(const std::vector<int>& sampleLines);

    // Changes a value of data line `line` (counted from 1 in this file); UTF-8.
    ControlFile& set(int line, const std::string& column, const std::string& value);
    // The value as UTF-8.
    std::string get(int line, const std::string& column) const;
    int lines() const { return static_cast<int>(rows_.size()); }

    void write(const std::string& path) const;

    static std::string samplePath();
    static std::string sampleForm();

private:
    std::vector<std::string> header_;
    std::map<std::string, std::size_t> column_;
    std::vector<std::vector<std::string>> rows_;
};

} // namespace wordbm::testing
