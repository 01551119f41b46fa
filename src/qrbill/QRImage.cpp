#include "qrbill/QRImage.h"

#include "qrbill/ImageSlot.h"
#include "qrbill/MonoBitmap.h"
#include "qrbill/MonoPng.h"
#include "qrbill/QRSymbol.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace wordbm {

namespace {

// The Swiss cross logo: a black square with a thin white border, 7 mm in all. The white cross has
// the federal proportions: 20/32 of the square long, 6/32 wide.
constexpr double kCrossBorderMm = 0.25;
constexpr double kCrossLengthRatio = 20.0 / 32.0;
constexpr double kCrossWidthRatio = 6.0 / 32.0;

int smallestPixelsPerModule(int moduleCount) {
    return (QRImage::kMinPixels + moduleCount - 1) / moduleCount;
}

// Each row of modules is painted once, run by run, and copied to the other pixel rows it spans.
MonoBitmap drawModules(const QRSymbol& code, int pixelsPerModule) {
    const int size = code.size();
    MonoBitmap bitmap(size * pixelsPerModule, size * pixelsPerModule);
    for (int y = 0; y < size; ++y) {
        const int top = y * pixelsPerModule;
        for (int x = 0; x < size;) {
            int end = x;
            while (end < size && code.dark(end, y)) {
                ++end;
            }
            if (end > x) {
                bitmap.fill(x * pixelsPerModule, top, (end - x) * pixelsPerModule, 1, true);
            }
            x = end + 1;
        }
        for (int row = 1; row < pixelsPerModule; ++row) {
            bitmap.copyRow(top, top + row);
        }
    }
    return bitmap;
}

// The span nearest to `wanted` pixels that centres exactly in `total`: its parity must match.
int centredSpan(int total, double wanted) {
    const int parity = total % 2;
    return 2 * static_cast<int>(std::lround((wanted - parity) / 2.0)) + parity;
}

void fillCentred(MonoBitmap& bitmap, int width, int height, bool black) {
    bitmap.fill((bitmap.width() - width) / 2, (bitmap.height() - height) / 2, width, height, black);
}

void drawSwissCross(MonoBitmap& bitmap) {
    const int total = bitmap.width();
    const double pixelsPerMm = total / static_cast<double>(QRImage::kCodeSizeMm);
    const int outer = centredSpan(total, QRImage::kCrossSizeMm * pixelsPerMm);
    const int border = std::max(1, static_cast<int>(std::lround(kCrossBorderMm * pixelsPerMm)));
    const int square = outer - 2 * border;
    const int length = centredSpan(total, square * kCrossLengthRatio);
    const int width = centredSpan(total, square * kCrossWidthRatio);

    fillCentred(bitmap, outer, outer, false);
    fillCentred(bitmap, square, square, true);
    fillCentred(bitmap, length, width, false);
    fillCentred(bitmap, width, length, false);
}

std::uint32_t pixelsPerMetre(int pixels) {
    return static_cast<std::uint32_t>(std::lround(pixels * 1000.0 / QRImage::kCodeSizeMm));
}

} // namespace

bool QRImage::Encode(const std::string& payload) {
    reset();
    if (payload.empty()) {
        lastError_ = "Der Inhalt des QR-Codes ist leer.";
        return false;
    }
    try {
        // One byte segment for the whole text, its UTF-8 bytes as they are and no ECI header: QR-bill
        // readers take byte mode as UTF-8, and a split into numeric or alphanumeric segments gains nothing.
        const std::optional<QRSymbol> code = QRSymbol::encode(payload, kMaxVersion);
        if (!code && payload.size() > kMaxPayloadBytes) {
            lastError_ = "Der Inhalt des QR-Codes ist zu lang (" + std::to_string(payload.size()) +
                         " Bytes, höchstens " + std::to_string(kMaxPayloadBytes) + ").";
            return false;
        }
        if (!code) {
            lastError_ = "Das Bild des QR-Codes konnte nicht erstellt werden.";
            return false;
        }
        const int perModule = smallestPixelsPerModule(code->size());
        MonoBitmap bitmap = drawModules(*code, perModule);
        drawSwissCross(bitmap);
        png_ = encodeMonoPng(bitmap, pixelsPerMetre(bitmap.width()));
        if (png_.empty()) {
            lastError_ = "Das Bild des QR-Codes konnte nicht erstellt werden.";
            return false;
        }
        version_ = code->version();
        moduleCount_ = code->size();
        pixelsPerModule_ = perModule;
        return true;
    } catch (const std::exception&) {
        // Only memory can run out here; the caller gets a failed Encode, never an exception.
        reset();
        lastError_ = "Das Bild des QR-Codes konnte nicht erstellt werden.";
        return false;
    }
}

bool QRImage::ClipboardCopy() const {
    if (empty()) {
        ImageSlot::instance().clear();
        return false;
    }
    ImageSlot::instance().put(SlotImage{png_, sizeMm(), sizeMm()});
    return true;
}

void QRImage::reset() {
    png_.clear();
    version_ = 0;
    moduleCount_ = 0;
    pixelsPerModule_ = 0;
    lastError_.clear();
}

} // namespace wordbm
