#pragma once

#include "engine/ports/SlipFitCheck.h"
#include "engine/slip/SlipFit.h"
#include "engine/word/Forward.h"

#include <string>
#include <vector>

namespace wordbm {

class SlipBoxFitter;

// The lines of the slip's boxes in a form filled with stand-ins, each line a row of fixed texts
// and stand-ins, with its size and boldness. For a row's texts it rebuilds the lines the boxes
// would hold and asks the fitter whether it would shorten any.
class SlipBoxPlan final : public SlipFitCheck {
public:
    // `fitter` must outlive the plan. May throw AutomationError.
    SlipBoxPlan(const SlipBoxFitter& fitter, word::Document& doc, const std::vector<std::string>& standIns);

    // False too when a text breaks into lines whose size the stand-in form cannot tell.
    bool LeavesAlone(const std::vector<std::string>& texts, const QRCoder& coder,
                     std::int32_t row) const override;

private:
    // Fixed text, or the text of stand-in `slot`.
    struct Piece {
        std::string text;
        int slot = -1;
    };
    struct Line {
        std::vector<Piece> pieces;
        float size = 0.0F;
        bool bold = false;
    };
    struct Box {
        std::vector<Line> lines;
        float width = 0.0F;
        float height = 0.0F;
    };

    static Line planned(const SlipFit::Line& line, const std::vector<std::string>& standIns);
    // False when a text would start a line of unknown size.
    static bool addFilled(const Line& line, const std::vector<std::string>& texts,
                          std::vector<SlipFit::Line>& lines);

    const SlipBoxFitter& fitter_;
    std::vector<Box> boxes_;
};

} // namespace wordbm
