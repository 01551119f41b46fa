// What the QR code of one invoice costs: its symbol (libqrencode's layout, the mask chosen by the
// standard's penalty rules), the same symbol from qrcodegen with its automatic mask and libqrencode
// with its own mask for comparison, and the whole picture as the payment part receives it. The payload is row
// 1 of the sample run.
#include "data/CSVfile.h"
#include "qrbill/QRCoder.h"
#include "qrbill/QRImage.h"
#include "qrbill/QRSymbol.h"

#include <benchmark/benchmark.h>
#include <qrcodegen.hpp>
#include <qrencode.h>
#include <string>
#include <vector>

namespace {

const std::string& samplePayload() {
    static const std::string payload = [] {
        wordbm::CSVfile data;
        data.ReadFile(std::string(WORDBM_SOURCE_DIR) + "/examples/Rechnungslauf.csv");
        return wordbm::QRCoder(data).QRText(1);
    }();
    return payload;
}

void BM_Symbol(benchmark::State& state) {
    const std::string& payload = samplePayload();
    for (auto _ : state) {
        benchmark::DoNotOptimize(wordbm::QRSymbol::encode(payload, wordbm::QRImage::kMaxVersion));
    }
    state.SetLabel(std::to_string(payload.size()) + " bytes");
}

void BM_SymbolByQrcodegen(benchmark::State& state) {
    const std::string& payload = samplePayload();
    const std::vector<std::uint8_t> bytes(payload.begin(), payload.end());
    using qrcodegen::QrCode;
    for (auto _ : state) {
        benchmark::DoNotOptimize(QrCode::encodeSegments({qrcodegen::QrSegment::makeBytes(bytes)},
                                                        QrCode::Ecc::MEDIUM, QrCode::MIN_VERSION,
                                                        wordbm::QRImage::kMaxVersion, -1, false));
    }
}

// libqrencode alone, with the mask of its own weighing: what the standard's mask choice adds.
void BM_LibqrencodeOwnMask(benchmark::State& state) {
    const std::string& payload = samplePayload();
    for (auto _ : state) {
        QRcode* code =
            QRcode_encodeData(static_cast<int>(payload.size()),
                              reinterpret_cast<const unsigned char*>(payload.data()), 0, QR_ECLEVEL_M);
        benchmark::DoNotOptimize(code);
        QRcode_free(code);
    }
}

void BM_Picture(benchmark::State& state) {
    const std::string& payload = samplePayload();
    wordbm::QRImage image;
    for (auto _ : state) {
        if (!image.Encode(payload)) {
            state.SkipWithError(image.lastError().c_str());
            return;
        }
    }
    state.SetLabel(std::to_string(image.pixelSize()) + " px, " + std::to_string(image.png().size()) +
                   " bytes");
}

BENCHMARK(BM_Symbol)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SymbolByQrcodegen)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LibqrencodeOwnMask)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Picture)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
