#include "qrbill/QRSymbol.h"

#include "qrbill/MaskPenalty.h"

#include <limits>
#include <memory>
#include <qrencode.h>

namespace wordbm {

namespace {

using DataModule = QRSymbol::DataModule;

constexpr int MaskCount = 8;
// What libqrencode sets on every module that is not data or error correction.
constexpr std::uint8_t FunctionModule = 0x80;

// Whether the mask darkens a light data module and lightens a dark one. Every pattern repeats
// every six modules across and down, so the remainders of x and y by 6 (and the two block parities
// of pattern 4) decide.
bool maskFlips(int mask, const DataModule& module) {
    const int x = module.x6;
    const int y = module.y6;
    switch (mask) {
    case 0:
        return (x + y) % 2 == 0;
    case 1:
        return y % 2 == 0;
    case 2:
        return x % 3 == 0;
    case 3:
        return (x + y) % 3 == 0;
    case 4:
        return (module.xBlock + module.yBlock) % 2 == 0;
    case 5:
        return x * y % 2 + x * y % 3 == 0;
    case 6:
        return (x * y % 2 + x * y % 3) % 2 == 0;
    default:
        return ((x + y) % 2 + x * y % 3) % 2 == 0;
    }
}

// Level M (indicator 00) and the mask, with their BCH(15,5) check bits, XORed as the standard asks.
int formatBits(int mask) {
    const int data = mask;
    int remainder = data;
    for (int i = 0; i < 10; ++i) {
        remainder = (remainder << 1) ^ ((remainder >> 9) * 0x537);
    }
    return ((data << 10) | remainder) ^ 0x5412;
}

// Where bit i of the format information lies in its first copy, beside the top-left finder.
struct Place {
    int x, y;
};
Place firstCopy(int bit) {
    if (bit <= 5) {
        return {8, bit};
    }
    if (bit == 6) {
        return {8, 7};
    }
    if (bit == 7) {
        return {8, 8};
    }
    if (bit == 8) {
        return {7, 8};
    }
    return {14 - bit, 8};
}

// ...and in its second copy, split between the other two finders.
Place secondCopy(int bit, int size) {
    return bit < 8 ? Place{size - 1 - bit, 8} : Place{8, size - 15 + bit};
}

struct FreeCode {
    void operator()(QRcode* code) const { QRcode_free(code); }
};

} // namespace

std::optional<QRSymbol> QRSymbol::encode(std::string_view payload, int maxVersion) {
    if (payload.empty()) {
        return std::nullopt;
    }
    const std::unique_ptr<QRcode, FreeCode> code(
        QRcode_encodeData(static_cast<int>(payload.size()),
                          reinterpret_cast<const unsigned char*>(payload.data()), 0, QR_ECLEVEL_M));
    if (!code || code->version > maxVersion) {
        return std::nullopt;
    }
    QRSymbol symbol(code->version, code->width);
    const int size = symbol.size_;
    symbol.modules_.resize(static_cast<std::size_t>(size) * size);
    std::vector<DataModule> data;
    data.reserve(symbol.modules_.size());
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const std::size_t i = static_cast<std::size_t>(y * size + x);
            symbol.modules_[i] = code->data[i] & 1U;
            if ((code->data[i] & FunctionModule) == 0) {
                data.push_back({static_cast<std::uint32_t>(i), static_cast<std::uint8_t>(x % 6),
                                static_cast<std::uint8_t>(y % 6), static_cast<std::uint8_t>(x / 3 % 2),
                                static_cast<std::uint8_t>(y / 2 % 2)});
            }
        }
    }
    const int libraryMask = symbol.readFormatMask();
    if (libraryMask < 0) {
        // Not a symbol as the standard lays it out: better no code than a wrong one.
        return std::nullopt;
    }
    // Masking twice with the same pattern undoes it.
    symbol.applyMask(data, libraryMask);
    const std::vector<std::uint8_t> unmasked = symbol.modules_;
    long lowest = std::numeric_limits<long>::max();
    int best = 0;
    for (int mask = 0; mask < MaskCount; ++mask) {
        symbol.modules_ = unmasked;
        symbol.applyMask(data, mask);
        symbol.drawFormat(mask);
        // The first of equal penalties wins, as in the standard's order of masks.
        if (const long penalty = MaskPenalty::score(symbol.modules_, size); penalty < lowest) {
            lowest = penalty;
            best = mask;
        }
    }
    symbol.modules_ = unmasked;
    symbol.applyMask(data, best);
    symbol.drawFormat(best);
    symbol.mask_ = best;
    return symbol;
}

void QRSymbol::applyMask(const std::vector<DataModule>& data, int mask) {
    for (const DataModule& module : data) {
        if (maskFlips(mask, module)) {
            modules_[module.index] ^= 1U;
        }
    }
}

void QRSymbol::drawFormat(int mask) {
    const int bits = formatBits(mask);
    for (int bit = 0; bit < 15; ++bit) {
        const auto value = static_cast<std::uint8_t>((bits >> bit) & 1);
        for (const Place place : {firstCopy(bit), secondCopy(bit, size_)}) {
            modules_[static_cast<std::size_t>(place.y * size_ + place.x)] = value;
        }
    }
}

// The mask libqrencode chose, from the format information it drew; -1 if it matches none.
int QRSymbol::readFormatMask() const {
    for (int mask = 0; mask < MaskCount; ++mask) {
        const int bits = formatBits(mask);
        bool same = true;
        for (int bit = 0; bit < 15 && same; ++bit) {
            const Place place = firstCopy(bit);
            same = dark(place.x, place.y) == (((bits >> bit) & 1) != 0);
        }
        if (same) {
            return mask;
        }
    }
    return -1;
}

} // namespace wordbm
