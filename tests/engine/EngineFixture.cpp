#include "EngineFixture.h"

#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Range.h"
#include "kit/FileBytes.h"

#include <filesystem>
#include <stdexcept>

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

std::string EngineTest::form(const std::string& name, const TestForm& form) {
    const std::string path = base_ / ("forms/" + name);
    form.save(path);
    originals_[path] = readBytes(path);
    return path;
}

word::Document& EngineTest::doc() {
    if (!engine->Doc()) {
        throw std::logic_error("no document is open");
    }
    return *engine->Doc();
}

std::string EngineTest::bookmarkText(const std::string& name) {
    return doc().Bookmarks()->Item(name)->Range()->Text();
}

void EngineTest::expectOriginalsUntouched() const {
    for (const auto& [path, bytes] : originals_) {
        EXPECT_EQ(readBytes(path), bytes) << path;
    }
}

} // namespace wordbm::testing
