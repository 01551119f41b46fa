#pragma once

#include <string>

namespace wordbm::ooxml {

// A folder only this process can read, for the copies handed to LibreOffice and the printer;
// removed with its content when the object goes. Throws AutomationError when it cannot be made.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

} // namespace wordbm::ooxml
