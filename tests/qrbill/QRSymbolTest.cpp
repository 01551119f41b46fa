#include "qrbill/QRSymbol.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <qrcodegen.hpp>
#include <string>
#include <vector>

namespace wordbm {
namespace {

using qrcodegen::QrCode;
using qrcodegen::QrSegment;

std::vector<std::string> corpusPayloads() {
    std::vector<std::string> payloads;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(WORDBM_CORPUS_DIR) / "qrbill")) {
        if (entry.path().extension() == ".txt") {
            std::ifstream in(entry.path(), std::ios::binary);
            payloads.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        }
    }
    return payloads;
}

// qrcodegen weighs the masks exactly as the standard does; libqrencode, on its own, picks another
// mask for about one payload in four of the corpus.
TEST(QRSymbol, EveryCorpusPayloadGivesTheStandardsSymbolModuleForModule) {
    int compared = 0;
    for (const std::string& payload : corpusPayloads()) {
        if (payload.empty()) {
            continue;
        }
        SCOPED_TRACE(payload);
        const std::vector<std::uint8_t> bytes(payload.begin(), payload.end());
        // Level M kept even where a higher one would fit the same version.
        const QrCode reference = QrCode::encodeSegments({QrSegment::makeBytes(bytes)}, QrCode::Ecc::MEDIUM,
                                                        QrCode::MIN_VERSION, QrCode::MAX_VERSION, -1, false);
        const auto symbol = QRSymbol::encode(payload, 40);
        ASSERT_TRUE(symbol.has_value());
        ASSERT_EQ(symbol->size(), reference.getSize());
        EXPECT_EQ(symbol->version(), reference.getVersion());
        EXPECT_EQ(symbol->mask(), reference.getMask());
        int differing = 0;
        for (int y = 0; y < symbol->size(); ++y) {
            for (int x = 0; x < symbol->size(); ++x) {
                differing += symbol->dark(x, y) != reference.getModule(x, y) ? 1 : 0;
            }
        }
        EXPECT_EQ(differing, 0);
        ++compared;
    }
    EXPECT_GE(compared, 50);
}

TEST(QRSymbol, RefusesAnEmptyPayloadAndOneAboveTheLargestVersion) {
    EXPECT_FALSE(QRSymbol::encode("", 25).has_value());
    // Version 2 at level M holds 26 bytes, version 1 only 14.
    EXPECT_EQ(QRSymbol::encode(std::string(26, 'x'), 2)->version(), 2);
    EXPECT_FALSE(QRSymbol::encode(std::string(27, 'x'), 2).has_value());
}

} // namespace
} // namespace wordbm
