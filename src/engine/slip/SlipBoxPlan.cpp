#include "engine/slip/SlipBoxPlan.h"

#include "engine/slip/SlipBoxFitter.h"
#include "engine/slip/SlipValue.h"
#include "engine/word/Shapes.h"

#include <algorithm>

namespace wordbm {

namespace {

bool lineEnd(char c) {
    return c == SlipValue::LineBreak || c == '\r' || c == '\n';
}

} // namespace

SlipBoxPlan::SlipBoxPlan(const SlipBoxFitter& fitter, word::Document& doc,
                         const std::vector<std::string>& standIns)
    : fitter_(fitter) {
    for (const word::ShapePtr& shape : SlipBoxFitter::Boxes(doc)) {
        Box& box = boxes_.emplace_back();
        box.width = shape->Width();
        box.height = shape->Height();
        for (const SlipFit::Line& line : SlipBoxFitter::LinesOf(*shape)) {
            box.lines.push_back(planned(line, standIns));
        }
    }
}

SlipBoxPlan::Line SlipBoxPlan::planned(const SlipFit::Line& line, const std::vector<std::string>& standIns) {
    Line planned{{}, line.size, line.bold};
    std::string_view rest = line.text;
    while (!rest.empty()) {
        // The nearest stand-in; none of them is the start of another, as each ends in a marker.
        std::size_t at = rest.size();
        int slot = -1;
        for (std::size_t i = 0; i < standIns.size(); ++i) {
            const std::size_t found = rest.find(standIns[i]);
            if (found < at) {
                at = found;
                slot = static_cast<int>(i);
            }
        }
        if (at > 0) {
            planned.pieces.push_back({std::string(rest.substr(0, at)), -1});
        }
        if (slot < 0) {
            break;
        }
        planned.pieces.push_back({{}, slot});
        rest.remove_prefix(at + standIns[static_cast<std::size_t>(slot)].size());
    }
    return planned;
}

bool SlipBoxPlan::addFilled(const Line& line, const std::vector<std::string>& texts,
                            std::vector<SlipFit::Line>& lines) {
    lines.push_back({{}, line.size, line.bold});
    for (std::size_t i = 0; i < line.pieces.size(); ++i) {
        const Piece& piece = line.pieces[i];
        if (piece.slot < 0) {
            lines.back().text += piece.text;
            continue;
        }
        const auto slot = static_cast<std::size_t>(piece.slot);
        if (slot >= texts.size()) {
            return false;
        }
        const std::string& text = texts[slot];
        std::size_t from = 0;
        for (std::size_t at = 0; at <= text.size(); ++at) {
            if (at < text.size() && !lineEnd(text[at])) {
                continue;
            }
            if (from > 0) {
                // A line the text starts has the text's size, which is the stand-in's only when the
                // stand-in began its line.
                if (i > 0) {
                    return false;
                }
                lines.push_back({{}, line.size, line.bold});
            }
            lines.back().text += text.substr(from, at - from);
            from = at + 1;
        }
    }
    return true;
}

bool SlipBoxPlan::LeavesAlone(const std::vector<std::string>& texts, const QRCoder& coder,
                              std::int32_t row) const {
    const SlipBoxFitter::Roles roles = SlipBoxFitter::RolesOf(coder, row);
    return std::all_of(boxes_.begin(), boxes_.end(), [&](const Box& box) {
        std::vector<SlipFit::Line> lines;
        for (const Line& line : box.lines) {
            if (!addFilled(line, texts, lines)) {
                return false;
            }
        }
        return fitter_.LeavesAlone(std::move(lines), roles, box.width, box.height);
    });
}

} // namespace wordbm
