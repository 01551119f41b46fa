#include "EngineFixture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace wordbm::testing {

std::string readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void writeBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

EngineTest::EngineTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "wordbm-engine-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        ADD_FAILURE() << "no temp folder";
    }
    base_ = pattern;
    std::filesystem::create_directory(base_ + "/forms");
    if (const char* debug = std::getenv("TARVELL_DEBUG")) {
        savedDebug_ = debug;
    }
    ::setenv("TARVELL_DEBUG", base_.c_str(), 1);
    engine = std::make_unique<WordBM>(ui, options, word.factory());
}

EngineTest::~EngineTest() {
    engine.reset();
    savedDebug_ ? ::setenv("TARVELL_DEBUG", savedDebug_->c_str(), 1) : ::unsetenv("TARVELL_DEBUG");
    std::error_code error;
    std::filesystem::remove_all(base_, error);
}

std::string EngineTest::original(const std::string& name, const std::string& bytes) {
    const std::string path = base_ + "/forms/" + name;
    writeBytes(path, bytes);
    originals_[path] = bytes;
    return path;
}

std::string EngineTest::copyIn(const std::string& source, const std::string& name) {
    return original(name, readBytes(source));
}

std::string EngineTest::form(const std::string& name, const fake::FakeForm& form) {
    word.forms[name] = form;
    return original(name);
}

void EngineTest::expectOriginalsUntouched() const {
    for (const auto& [path, bytes] : originals_) {
        EXPECT_EQ(readBytes(path), bytes) << path;
    }
}

} // namespace wordbm::testing
