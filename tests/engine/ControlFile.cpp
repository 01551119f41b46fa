#include "ControlFile.h"

#include "EngineFixture.h"
#include "support/Cp1252.h"
#include "support/Strings.h"

namespace wordbm::testing {

std::string ControlFile::samplePath() {
    return std::string(WORDBM_TEST_SOURCE_DIR) + "/../../examples/Rechnungslauf.csv";
}

std::string ControlFile::sampleForm() {
    return std::string(WORDBM_TEST_SOURCE_DIR) + "/../../examples/Rechnung.docx";
}

ControlFile::ControlFile(const std::vector<int>& sampleLines) {
    const std::vector<std::string> lines = split(cp1252ToUtf8(readBytes(samplePath())), "\r\n");
    header_ = split(lines.at(0), ";");
    for (std::size_t i = 0; i < header_.size(); ++i) {
        column_[header_[i]] = i;
    }
    for (const int line : sampleLines) {
        rows_.push_back(split(lines.at(static_cast<std::size_t>(line)), ";"));
    }
}

ControlFile& ControlFile::set(int line, const std::string& column, const std::string& value) {
    rows_.at(static_cast<std::size_t>(line - 1)).at(column_.at(column)) = value;
    return *this;
}

std::string ControlFile::get(int line, const std::string& column) const {
    return rows_.at(static_cast<std::size_t>(line - 1)).at(column_.at(column));
}

void ControlFile::write(const std::string& path) const {
    std::string text = join(header_, ";") + "\r\n";
    for (const auto& row : rows_) {
        text += join(row, ";") + "\r\n";
    }
    writeBytes(path, utf8ToCp1252(text));
}

} // namespace wordbm::testing
