#include "engine/ooxml/TextWriter.h"

#include "engine/ooxml/RunSplitter.h"
#include "engine/ooxml/Utf16.h"
#include "engine/word/AutomationError.h"

#include <vector>

namespace wordbm::ooxml {

namespace {

// XML 1.0 cannot hold these at all, not even escaped.
bool storable(unsigned char c) {
    return c >= 0x20 || c == '\t';
}

} // namespace

long TextWriter::write(std::string_view text) {
    units_ = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\r' || c == '\n') {
            if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
                ++i;
            }
            flush();
            run_ = {};
            at_ = splitParagraph(at_);
            ++units_;
        } else if (c == '\t' || c == '\v' || c == '\f') {
            flush();
            auto node = run().append_child(c == '\t' ? "w:tab" : "w:br");
            if (c == '\f') {
                node.append_attribute("w:type") = "page";
            }
            ++units_;
        } else if (storable(static_cast<unsigned char>(c))) {
            pending_ += c;
        }
    }
    flush();
    return units_;
}

void TextWriter::writeRun(pugi::xml_node prototype) {
    flush();
    run_ = at_.insertCopy(prototype);
}

pugi::xml_node TextWriter::run() {
    if (!run_) {
        run_ = at_.insert("w:r");
        if (properties_) {
            run_.append_copy(properties_);
        }
    }
    return run_;
}

void TextWriter::flush() {
    if (pending_.empty()) {
        return;
    }
    RunSplitter::setText(run().append_child("w:t"), pending_);
    units_ += utf16::length(pending_);
    pending_.clear();
}

Location TextWriter::splitParagraph(Location at) {
    std::vector<pugi::xml_node> chain; // from the location's parent up to its paragraph
    for (auto node = at.parent; node; node = node.parent()) {
        chain.push_back(node);
        if (std::string_view(node.name()) == "w:p") {
            break;
        }
    }
    const auto paragraph = chain.back();
    if (std::string_view(paragraph.name()) != "w:p") {
        throw AutomationError("Hier kann kein Absatz beginnen.");
    }
    auto target = paragraph.parent().insert_child_before("w:p", paragraph);
    if (auto properties = paragraph.child("w:pPr")) {
        // The section break stays with the original paragraph mark, which ends the section.
        target.append_copy(properties).remove_child("w:sectPr");
    }
    for (int level = static_cast<int>(chain.size()) - 1; level >= 0; --level) {
        const auto container = chain[level];
        const auto stop =
            level == 0 ? (at.prev ? at.prev.next_sibling() : container.first_child()) : chain[level - 1];
        for (auto node = container.first_child(); node && node != stop;) {
            const auto following = node.next_sibling();
            if (!(container == paragraph && std::string_view(node.name()) == "w:pPr")) {
                target.append_move(node);
            }
            node = following;
        }
        if (level > 0) {
            // An inline container (hyperlink, smart tag) split in two keeps its attributes on both halves.
            auto half = target.append_child(chain[level - 1].name());
            for (auto attribute : chain[level - 1].attributes()) {
                half.append_attribute(attribute.name()) = attribute.value();
            }
            target = half;
        }
    }
    return {at.parent, at.parent == paragraph ? paragraph.child("w:pPr") : pugi::xml_node()};
}

} // namespace wordbm::ooxml
