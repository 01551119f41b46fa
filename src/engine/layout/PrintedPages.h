#pragma once

#include <string>
#include <vector>

namespace wordbm {

// A rectangle on a page, in points from the page's top left corner.
struct PageBox {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
    bool contains(double x, double y) const { return x >= left && x <= right && y >= top && y <= bottom; }
    PageBox united(const PageBox& other) const;
};

// One word as the PDF prints it: its text in UTF-16 units, as Word counts them, and the box of each.
struct PrintedWord {
    std::u16string text;
    std::vector<PageBox> chars;
};

struct PrintedPage {
    double width = 0;
    double height = 0;
    std::vector<PrintedWord> words;
};

// The words of a PDF, page by page, with where each character prints.
class PrintedPages {
public:
    // Empty when the file cannot be read as a PDF.
    static std::vector<PrintedPage> read(const std::string& pdfPath);
};

} // namespace wordbm
