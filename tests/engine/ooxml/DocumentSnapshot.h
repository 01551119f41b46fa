#pragma once

#include <map>
#include <string>
#include <vector>

namespace wordbm::ooxml {
class Package;
}

namespace wordbm::ooxml::test {

// Every paragraph of every XML part of a saved document, serialised as it is stored, so that a test
// can tell exactly which paragraphs an edit changed.
class DocumentSnapshot {
public:
    explicit DocumentSnapshot(const std::string& path);

    // Paragraph texts (serialised XML) that differ from `before`, part by part; a part whose
    // paragraph count changed lists all of its paragraphs.
    std::vector<std::string> changedSince(const DocumentSnapshot& before) const;
    const std::vector<std::string>& paragraphs(const std::string& part) const { return paragraphs_.at(part); }

private:
    std::map<std::string, std::vector<std::string>> paragraphs_;
};

} // namespace wordbm::ooxml::test
