#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace wordbm {

// The modules of a QR code: the payload's bytes as one byte-mode segment without ECI, error
// correction level M, the smallest version that holds them. libqrencode lays out the data and
// the error correction; the mask is chosen here by the standard's penalty rules, which
// libqrencode weighs differently.
class QRSymbol {
public:
    // nullopt when the payload is empty or needs a version above maxVersion.
    static std::optional<QRSymbol> encode(std::string_view payload, int maxVersion);

    int size() const { return size_; }
    int version() const { return version_; }
    int mask() const { return mask_; }
    bool dark(int x, int y) const { return modules_[static_cast<std::size_t>(y * size_ + x)] != 0; }
    // Row-major, 1 for dark.
    const std::vector<std::uint8_t>& modules() const { return modules_; }

    // A module that carries data or error correction, where the mask applies.
    struct DataModule {
        std::uint32_t index;         // row-major
        std::uint8_t x6, y6;         // x and y modulo 6
        std::uint8_t xBlock, yBlock; // (x / 3) and (y / 2) modulo 2
    };

private:
    QRSymbol(int version, int size) : version_(version), size_(size) {}

    void applyMask(const std::vector<DataModule>& data, int mask);
    void drawFormat(int mask);
    int readFormatMask() const;

    int version_;
    int size_;
    int mask_ = 0;
    std::vector<std::uint8_t> modules_;
};

} // namespace wordbm
