#include "engine/layout/PrintedPages.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <poppler-document.h>
#include <poppler-page.h>

namespace wordbm {

PageBox PageBox::united(const PageBox& other) const {
    return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
            std::max(bottom, other.bottom)};
}

namespace {

PageBox boxOf(const poppler::rectf& r) {
    return {r.left(), r.top(), r.right(), r.bottom()};
}

} // namespace

std::vector<PrintedPage> PrintedPages::read(const std::string& pdfPath) {
    // Poppler writes its complaints about damaged files to stderr; an empty result says enough.
    static std::once_flag quiet;
    std::call_once(quiet,
                   [] { poppler::set_debug_error_function([](const std::string&, void*) {}, nullptr); });
    std::vector<PrintedPage> pages;
    const std::unique_ptr<poppler::document> pdf(poppler::document::load_from_file(pdfPath));
    if (!pdf || pdf->is_locked()) {
        return pages;
    }
    for (int index = 0; index < pdf->pages(); ++index) {
        const std::unique_ptr<poppler::page> page(pdf->create_page(index));
        PrintedPage printed;
        if (page) {
            const poppler::rectf size = page->page_rect();
            printed.width = size.width();
            printed.height = size.height();
            for (const poppler::text_box& box : page->text_list()) {
                PrintedWord word;
                const poppler::ustring text = box.text();
                word.text.assign(text.begin(), text.end());
                // A glyph that stands for several letters (a ligature) has one box for them all.
                for (std::size_t i = 0; i < word.text.size(); ++i) {
                    const PageBox letter = boxOf(box.char_bbox(i));
                    const bool none = letter.width() <= 0 && letter.height() <= 0;
                    word.chars.push_back(none ? (i > 0 ? word.chars.back() : boxOf(box.bbox())) : letter);
                }
                printed.words.push_back(std::move(word));
            }
        }
        pages.push_back(std::move(printed));
    }
    return pages;
}

} // namespace wordbm
