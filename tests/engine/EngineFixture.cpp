#include "EngineFixture.h"

#include "kit/FileBytes.h"

#include <filesystem>

namespace wordbm::testing {

EngineTest::EngineTest() {
    std::filesystem::create_directory(base_ / "forms");
    engine = std::make_unique<WordBM>(ui, options, word.factory());
}

// The engine ends its session while its working folder is still there.
EngineTest::~EngineTest() {
    engine.reset();
}

std::string EngineTest::original(const std::string& name, const std::string& bytes) {
    const std::string path = base_ / ("forms/" + name);
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
