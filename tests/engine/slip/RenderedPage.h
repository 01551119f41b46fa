#pragma once

#include <optional>
#include <string>
#include <vector>

namespace wordbm::slip::test {

// Page 1 of a PDF as poppler renders and reads it. Lengths in millimetres from the page's top left.
class RenderedPage {
public:
    struct Area {
        double left = 0.0;
        double top = 0.0;
        double right = 0.0;
        double bottom = 0.0;
        bool contains(const Area& inner) const {
            return inner.left >= left && inner.right <= right && inner.top >= top && inner.bottom <= bottom;
        }
    };
    struct Word {
        std::string text;
        Area box;
    };

    // pdftoppm and pdftotext are installed.
    static bool toolsAvailable();
    // pdffonts' listing of the fonts the PDF uses.
    static std::string fonts(const std::string& pdf);
    // Renders in grey at `dpi`; an empty page when poppler fails.
    RenderedPage(const std::string& pdf, int dpi);

    bool empty() const { return pixels_.empty(); }
    int width() const { return width_; }
    int height() const { return height_; }
    const std::vector<unsigned char>& pixels() const { return pixels_; }
    // The box around the dark pixels inside `window`; nullopt when all is light.
    std::optional<Area> darkArea(const Area& window) const;

    const std::vector<Word>& words() const { return words_; }
    // The words reading `text` whose box lies inside `area`.
    std::vector<Word> wordsIn(const std::string& text, const Area& area) const;

private:
    int dpi_;
    int width_ = 0;
    int height_ = 0;
    std::vector<unsigned char> pixels_;
    std::vector<Word> words_;
};

} // namespace wordbm::slip::test
