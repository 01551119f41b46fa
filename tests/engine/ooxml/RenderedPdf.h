#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace wordbm::ooxml::canvastest {

// What LibreOffice makes of a document, measured with poppler's tools. Lengths in millimetres
// from the top left corner of the first page.
class RenderedPdf {
public:
    struct Word {
        std::string text;
        double left = 0.0;
        double top = 0.0;
        double right = 0.0;
        double bottom = 0.0;
    };
    struct Area {
        double left = 0.0;
        double top = 0.0;
        double right = 0.0;
        double bottom = 0.0;
    };

    // soffice, pdftotext, pdftoppm and pdffonts are all installed.
    static bool toolsAvailable();

    // Converts the documents in one LibreOffice run with a profile of its own under `work`; returns
    // the PDFs (in `work`), or nothing when LibreOffice failed.
    static std::vector<std::filesystem::path> convert(const std::vector<std::filesystem::path>& documents,
                                                      const std::filesystem::path& work);

    static std::vector<Word> words(const std::filesystem::path& pdf);
    // The first word equal to `text`; nullopt when none is.
    static std::optional<Word> word(const std::filesystem::path& pdf, const std::string& text);
    // The box around the dark pixels of `window` on page 1, rendered at `dpi`; nullopt when all is light.
    static std::optional<Area> darkArea(const std::filesystem::path& pdf, const Area& window, int dpi);
    // How many pixels of page 1, rendered at `dpi`, differ clearly between the two PDFs; nullopt
    // when they cannot be rendered or differ in size.
    static std::optional<std::size_t> differingPixels(const std::filesystem::path& first,
                                                      const std::filesystem::path& second, int dpi);
    // pdffonts' listing and pdftotext's plain text.
    static std::string fonts(const std::filesystem::path& pdf);
    static std::string text(const std::filesystem::path& pdf);
};

} // namespace wordbm::ooxml::canvastest
