#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace wordbm {

// The QR code of the payment part as a picture: Encode makes it from the payload, ClipboardCopy
// hands it to the image slot from which Selection.Paste puts it into the document.
//
// Sizes follow the Swiss QR-bill rules: the code is 46 x 46 mm with a 7 x 7 mm Swiss cross in its
// middle. The picture is exactly the 46 mm code, without a quiet zone: the payment part's QR box
// (51 x 51 mm at 5 mm from the part's left edge, with the title above, the amount 5 mm below and
// the details 5 mm to the right) supplies the 5 mm quiet zone around it, and a picture with its own
// quiet zone would measure 56 mm and no longer fit the box.
//
// Every module is a whole number of pixels, the smallest number that gives at least 300 dpi over
// the 46 mm; the dpi therefore varies a little with the QR version. Module edges thus fall on pixel
// edges, and a picture scaled up without smoothing (LibreOffice's PDF asks for none) stays sharp at
// a printer's resolution; finer pixels would only refine the cross's edges, at four times the cost
// of every invoice's picture for each doubling.
class QRImage {
public:
    static constexpr int kCodeSizeMm = 46;
    static constexpr int kCrossSizeMm = 7;
    static constexpr int kMaxVersion = 25;
    static constexpr int kMinDpi = 300;
    // 46 mm at 300 dpi, rounded up.
    static constexpr int kMinPixels = (kCodeSizeMm * kMinDpi * 10 + 253) / 254;
    // What version 25 holds at level M in byte mode.
    static constexpr std::size_t kMaxPayloadBytes = 997;

    // Makes the picture of `payload` (the UTF-8 bytes of the QR-bill text): error correction M,
    // never raised, one byte-mode segment without ECI, version at most 25. False, with lastError()
    // set and no picture left behind, for an empty or too long payload.
    bool Encode(const std::string& payload);

    // Puts the picture into the application's image slot. Without a picture (nothing encoded, or
    // the last Encode failed) it empties the slot and returns false, so that a following paste
    // cannot put the previous invoice's code into this one.
    bool ClipboardCopy() const;

    bool empty() const { return png_.empty(); }
    const std::vector<std::uint8_t>& png() const { return png_; }
    // Width and height in pixels (the picture is square); 0 without a picture.
    int pixelSize() const { return moduleCount_ * pixelsPerModule_; }
    int pixelsPerModule() const { return pixelsPerModule_; }
    // The printed width and height; 0 without a picture. The PNG's pHYs gives the same size to
    // within the rounding to whole pixels per metre.
    double sizeMm() const { return empty() ? 0.0 : kCodeSizeMm; }
    // Modules per side (17 + 4 x version); 0 without a picture.
    int moduleCount() const { return moduleCount_; }
    int version() const { return version_; }
    // Why the last Encode failed (German, for a message box); empty after a success.
    const std::string& lastError() const { return lastError_; }

private:
    void reset();

    std::vector<std::uint8_t> png_;
    int version_ = 0;
    int moduleCount_ = 0;
    int pixelsPerModule_ = 0;
    std::string lastError_;
};

} // namespace wordbm
