#include "qrbill/PrintedCode.h"

// zxing-cpp 1.4 warns about its coming text() type unless told to use it already.
#define ZX_USE_UTF8 1
#include <ZXing/ReadBarcode.h>
#include <algorithm>
#include <memory>
#include <mutex>
#include <poppler-document.h>
#include <poppler-image.h>
#include <poppler-page-renderer.h>
#include <poppler-page.h>

namespace wordbm {

namespace {

constexpr double PointsPerMm = 72 / 25.4;

// Poppler writes its complaints about damaged files to stderr; the reading says what matters.
void quietPoppler() {
    static std::once_flag once;
    std::call_once(once,
                   [] { poppler::set_debug_error_function([](const std::string&, void*) {}, nullptr); });
}

std::vector<std::string> codesIn(const poppler::image& image) {
    if (!image.is_valid()) {
        return {};
    }
    ZXing::DecodeHints hints;
    hints.setFormats(ZXing::BarcodeFormat::QRCode);
    // A PDF page is never turned or too large to search as it is.
    hints.setTryRotate(false);
    hints.setTryDownscale(false);
    const ZXing::ImageView view(reinterpret_cast<const std::uint8_t*>(image.const_data()), image.width(),
                                image.height(), ZXing::ImageFormat::Lum, image.bytes_per_row());
    std::vector<std::string> codes;
    for (const ZXing::Result& result : ZXing::ReadBarcodes(view, hints)) {
        if (result.isValid()) {
            codes.emplace_back(result.bytes().begin(), result.bytes().end());
        }
    }
    return codes;
}

// The page in grey at Dpi: the whole page, or only where the payment part puts its code.
poppler::image render(const poppler::page_renderer& renderer, const poppler::page& page, bool codeOnly) {
    const poppler::rectf box = page.page_rect();
    const double pixelsPerMm = PrintedCode::Dpi / 25.4;
    const int width = static_cast<int>(box.width() / PointsPerMm * pixelsPerMm);
    const int height = static_cast<int>(box.height() / PointsPerMm * pixelsPerMm);
    if (!codeOnly) {
        return renderer.render_page(&page, PrintedCode::Dpi, PrintedCode::Dpi, 0, 0, width, height);
    }
    const int left = static_cast<int>(PrintedCode::CodeLeftMm * pixelsPerMm);
    const int right = std::min(width, static_cast<int>(PrintedCode::CodeRightMm * pixelsPerMm));
    const int foot = std::min(height, static_cast<int>(PrintedCode::FootMm * pixelsPerMm));
    return renderer.render_page(&page, PrintedCode::Dpi, PrintedCode::Dpi, left, height - foot, right - left,
                                foot);
}

} // namespace

PrintedCode::Reading PrintedCode::read(const std::string& pdfPath) {
    quietPoppler();
    Reading reading;
    const std::unique_ptr<poppler::document> document(poppler::document::load_from_file(pdfPath));
    if (!document || document->is_locked()) {
        reading.error = "PDF-Datei nicht lesbar";
        return reading;
    }
    poppler::page_renderer renderer;
    renderer.set_image_format(poppler::image::format_gray8);
    // Sharp module edges read faster and surer than smoothed ones.
    renderer.set_render_hints(0);
    const int pages = document->pages();
    for (const bool codeOnly : {true, false}) {
        for (int index = 0; index < pages; ++index) {
            const std::unique_ptr<poppler::page> page(document->create_page(index));
            if (page) {
                std::ranges::move(codesIn(render(renderer, *page, codeOnly)),
                                  std::back_inserter(reading.codes));
            }
        }
        if (!reading.codes.empty()) {
            break;
        }
    }
    return reading;
}

std::string PrintedCode::verdict(const std::string& pdfPath, const std::string& payload) {
    const Reading reading = read(pdfPath);
    if (!reading.error.empty()) {
        return reading.error;
    }
    if (reading.codes.empty()) {
        return NoCode;
    }
    const bool found = std::ranges::find(reading.codes, payload) != reading.codes.end();
    return found ? std::string() : OtherCode;
}

} // namespace wordbm
