#pragma once

#include "TestForm.h"
#include "engine/WordBM.h"
#include "engine/word/Document.h"
#include "engine/word/Range.h"
#include "kit/EnvGuard.h"
#include "kit/FaultyApplication.h"
#include "kit/FaultyWord.h"
#include "kit/FileBytes.h"
#include "kit/MemoryOptions.h"
#include "kit/ScriptedUserInterface.h"
#include "kit/TempDir.h"
#include "support/SessionFolder.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace wordbm::testing {

// An engine on the embedded word processor, with failures injected where a test asks for them, with a
// scripted person, in a fresh base folder (TARVELL_DEBUG) that holds the originals in "forms" and the working
// copies under "_temp_".
class EngineTest : public ::testing::Test {
protected:
    EngineTest();
    ~EngineTest() override;

    // Writes an original into the forms folder and returns its path.
    std::string original(const std::string& name, const std::string& bytes = "original bytes");
    // Copies a real document into the forms folder as an original and returns its path.
    std::string copyIn(const std::string& source, const std::string& name);
    // Writes the form as an original.
    std::string form(const std::string& name, const TestForm& form);
    bool open(const std::string& path) { return engine->mfWBM_OpenWordDoc(path); }

    FaultyApplication& app() { return word.app(); }
    // The engine's document.
    word::Document& doc();
    std::string mainText() { return doc().Content()->Text(); }
    // The text a bookmark of the engine's document covers; throws when it is absent.
    std::string bookmarkText(const std::string& name);
    std::string baseFolder() const { return base_.path().string(); }
    // This process's own folder under "_temp_", where the engine keeps its working copies.
    std::string workFolder() const { return base_ / ("_temp_/" + SessionFolder::name()); }
    // Every original still holds the bytes it was written with.
    void expectOriginalsUntouched() const;

    FaultyWord word;
    ScriptedUserInterface ui;
    MemoryOptions options;
    std::unique_ptr<WordBM> engine;

private:
    TempDir base_;
    EnvGuard debug_{"TARVELL_DEBUG", base_.path().string()};
    std::map<std::string, std::string> originals_;
};

} // namespace wordbm::testing
