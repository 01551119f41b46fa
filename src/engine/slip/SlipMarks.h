#pragma once

#include "engine/word/Forward.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace wordbm {

// The corner marks that frame an empty field of the QR slip (an amount or a debtor to be written by
// hand). One request puts the field's mark into every receipt and every payment-part canvas, so a
// slip built twice gets it twice.
class SlipMarks {
public:
    enum class Field { Amount, Debtor };

    struct Mark {
        Field field;
        std::string_view file;
        std::string_view canvasCode;
        float left = 0.0F; // millimetres, relative to the canvas
        float top = 0.0F;
        float width = 0.0F;
        float height = 0.0F;
    };

    // `folder` holds the mark pictures.
    explicit SlipMarks(std::string folder) : folder_(std::move(folder)) {}

    // The corner-mark pictures: "img" beside the running program, else the installed ones.
    static std::string DefaultFolder();
    static const std::vector<Mark>& Table();

    // Missing canvases are no error: that part just gets no mark. May throw AutomationError.
    void Place(word::Document& doc, Field field) const;

    const std::string& Folder() const { return folder_; }

private:
    void placeInto(word::Document& doc, const Mark& mark) const;

    std::string folder_;
};

} // namespace wordbm
