#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace wordbm::ooxml::canvastest {

// The entries of a small zip package held in memory, read and written with libzip, so that the
// drawing tests can build, reopen and rewrite .docx files without the package layer.
class CanvasZip {
public:
    // Throws std::runtime_error when the file cannot be read.
    static CanvasZip read(const std::filesystem::path& file);
    void write(const std::filesystem::path& file) const;

    // Adds the entry when missing; entries keep the order they were added in.
    std::string& operator[](const std::string& name);
    const std::string& at(const std::string& name) const;
    std::vector<std::string> names() const;

private:
    std::vector<std::pair<std::string, std::string>> entries_;
};

} // namespace wordbm::ooxml::canvastest
