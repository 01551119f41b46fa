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

// The page in grey at Dpi: only its lowest FootMm when `footOnly`.
poppler::image render(const poppler::page_renderer& renderer, const poppler::page& page, bool footOnly) {
    const poppler::rectf box = page.page_rect();
    const double scale = PrintedCode::Dpi / 72;
    const int width = static_cast<int>(box.width() * scale);
    const int height = static_cast<int>(box.height() * scale);
    const int foot = std::min(height, static_cast<int>(PrintedCode::FootMm * PointsPerMm * scale));
    if (!footOnly) {
        return renderer.render_page(&page, PrintedCode::Dpi, PrintedCode::Dpi, 0, 0, width, height);
    }
    return renderer.render_page(&page, PrintedCode::Dpi, PrintedCode::Dpi, 0, height - foot, width, foot);
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
    for (const bool footOnly : {true, false}) {
        for (int index = 0; index < pages; ++index) {
            const std::unique_ptr<poppler::page> page(document->create_page(index));
            if (page) {
                std::ranges::move(codesIn(render(renderer, *page, footOnly)),
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
