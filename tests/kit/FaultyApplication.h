#pragma once

#include "engine/word/Application.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace wordbm::testing {

// A real word-processor instance that a test can make fail. After crash() every call throws as
// calls to a process that died do; closeByHand() closes the open documents as a person at the
// machine would. Quits, saves and closes are counted: what they were asked leaves no trace in the files.
class FaultyApplication final : public word::Application,
                                public std::enable_shared_from_this<FaultyApplication> {
public:
    FaultyApplication(word::ApplicationPtr real, const std::set<std::string>& refused)
        : real_(std::move(real)), refused_(refused) {}

    word::DocumentsPtr Documents() override;
    word::DocumentPtr ActiveDocument() override;
    word::SelectionPtr Selection() override;
    bool Visible() const override;
    void Visible(bool visible) override;
    bool ScreenUpdating() const override;
    void ScreenUpdating(bool updating) override;
    void Quit(std::optional<int> saveChanges = std::nullopt) override;

    void crash();
    void closeByHand();

    // For its documents.
    void check() const;
    void refuse(const std::string& member) const;
    word::DocumentPtr wrap(word::DocumentPtr real);

    std::vector<std::optional<int>> quits;
    int opened = 0;
    int saves = 0;
    int closes = 0;

private:
    word::ApplicationPtr real_;
    const std::set<std::string>& refused_;
    bool crashed_ = false;
};

} // namespace wordbm::testing
