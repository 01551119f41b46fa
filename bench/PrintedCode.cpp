// What reading the QR code back costs beside making the PDF it is read from: invoices of the sample
// billing run are made by `wordbm merge` (beside this program in the build), each is exported to
// PDF by a warm LibreOffice worker, and its code is read back from that PDF. Medians per invoice.
#include "qrbill/PrintedCode.h"

#include "Timing.h"
#include "data/CSVfile.h"
#include "engine/office/OfficeConverter.h"
#include "qrbill/QRCoder.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;
using bench::Clock;
using bench::median;
using bench::millisecondsSince;

namespace {

constexpr int Invoices = 5;

struct Invoice {
    std::string docx, pdf, payload;
};

struct BenchFolder {
    fs::path path = fs::temp_directory_path() / ("wordbm-bench-code-" + std::to_string(::getpid()));
    std::vector<Invoice> invoices;
    BenchFolder() {
        fs::create_directories(path);
        const fs::path wordbm = fs::read_symlink("/proc/self/exe").parent_path() / "../src/app/wordbm";
        const fs::path source = fs::path(WORDBM_SOURCE_DIR) / "examples";
        const std::string command = "'" + wordbm.string() + "' merge --form '" +
                                    (source / "Rechnung.docx").string() + "' --csv '" +
                                    (source / "Rechnungslauf.csv").string() +
                                    "' --template '&R&.&E&' --close --out '" + path.string() + "' >/dev/null";
        if (std::system(command.c_str()) != 0) {
            return;
        }
        wordbm::CSVfile data;
        data.ReadFile((source / "Rechnungslauf.csv").string());
        const wordbm::QRCoder coder(data);
        for (int row = 1; row <= data.LineCount() && static_cast<int>(invoices.size()) < Invoices; ++row) {
            // &R& writes the invoice number with six digits.
            std::string number = data.FieldStr("RgNummer", row);
            number.insert(0, number.size() < 6 ? 6 - number.size() : 0, '0');
            const fs::path docx = path / (number + ".docx");
            if (fs::exists(docx)) {
                invoices.push_back(
                    {docx.string(), fs::path(docx).replace_extension(".pdf").string(), coder.QRText(row)});
            }
        }
    }
    ~BenchFolder() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
};

BenchFolder& folder() {
    static BenchFolder instance;
    return instance;
}

std::vector<double> exportSamples, readSamples;

void BM_PdfExport(benchmark::State& state) {
    const auto& invoices = folder().invoices;
    if (invoices.empty()) {
        state.SkipWithError("wordbm merge made no invoices");
        return;
    }
    wordbm::office::OfficeConverter converter;
    converter.setPoolSize(1);
    converter.warmUp();
    std::size_t next = 0;
    for (auto _ : state) {
        const Invoice& invoice = invoices[next++ % invoices.size()];
        const auto start = Clock::now();
        converter.toPdf(invoice.docx, invoice.pdf, false);
        const double elapsed = millisecondsSince(start);
        exportSamples.push_back(elapsed);
        state.SetIterationTime(elapsed / 1000.0);
    }
}

void BM_ReadCodeBack(benchmark::State& state) {
    const auto& invoices = folder().invoices;
    std::size_t next = 0;
    for (auto _ : state) {
        const Invoice& invoice = invoices[next++ % invoices.size()];
        const auto start = Clock::now();
        const std::string verdict = wordbm::PrintedCode::verdict(invoice.pdf, invoice.payload);
        const double elapsed = millisecondsSince(start);
        if (!verdict.empty()) {
            state.SkipWithError(verdict.c_str());
            return;
        }
        readSamples.push_back(elapsed);
        state.SetIterationTime(elapsed / 1000.0);
    }
}

BENCHMARK(BM_PdfExport)->Iterations(20)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadCodeBack)->Iterations(50)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    const double pdf = median(exportSamples);
    const double read = median(readSamples);
    std::printf("\nMedian per invoice: PDF export %.1f ms, QR code read back %.1f ms", pdf, read);
    if (pdf > 0) {
        std::printf(" (%.1f %% of the export)", 100 * read / pdf);
    }
    std::printf("\n");
    return 0;
}
