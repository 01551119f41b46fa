#pragma once

#include <string>
#include <vector>

namespace wordbm::test {

// The words of a PDF as poppler's pdftotext places them (-bbox): an outside reading of where
// text prints, in points from each page's top left corner.
struct PrintedWordBox {
    int page = 0;
    std::string text;
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

std::vector<PrintedWordBox> printedWords(const std::string& pdf);

} // namespace wordbm::test
