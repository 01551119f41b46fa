// Loading and reading a billing run's control file of realistic size: 100,000 invoices of the
// 55 export fields (about 50 MB of cp1252 text with CR LF), the largest runs offices make.
#include "data/CSVfile.h"
#include "support/FileOps.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <map>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

using wordbm::CSVfile;

namespace {

const char* const Header =
    "BueroAdr1;BueroAdr2;BueroAdr3;BueroAdr4;BueroAdr5;BankKto;BankAdr1;BankAdr2;BankAdr3;"
    "KliName;KliEx1;KliEx2;KliEx3;KliEx4;KliEx5;GeschNam;GeschTxt;GeschVon;GeschBis;"
    "GeschEx1;GeschEx2;GeschEx3;GeschEx4;GeschEx5;Abteil;Person;GeschArt;RgID;RgDatum;"
    "KliKonto;RgLimit;KliAdr1;KliAdr2;KliAdr3;KliAdr4;KliAdr5;BesrTn;KliKto;KliGebu;KliAusl;"
    "KliTot;MWSTSatz;KliMWST;MWSTID;KliTot2;BesrBet;BesrBetT;BesrBetTF;BesrBetTR;BesrRefNr;"
    "BesrCode;RgNummer;BesrRunNr;Referenz;RgDue";

// One invoice line; "\xFC" and friends are cp1252 umlauts, as the suite writes them.
std::string invoiceLine(int row) {
    const std::string n = std::to_string(row);
    const std::string amount = std::to_string(100 + row % 9000) + "." + std::to_string(10 + row % 90);
    const std::string date = std::to_string(1 + row % 28) + "." + std::to_string(1 + row % 12) + ".2026";
    std::string line = "Treuhand M\xFCller AG;Bahnhofstrasse 12;;8001 Z\xFCrich;Schweiz;CH93 0076 2011 6238 "
                       "5295 7;ZKB;;8010 Z\xFCrich;";
    line += "\"Kl\xE4ger " + n + "\";Mandat 2019;;;;;";
    line += "Erbteilung " + n + ";Beratung Erbschaft;1.1.2026;31.12.2026;";
    line += "Aufwand gem\xE4ss Liste;;;;;";
    line += "Recht;A. B\xE4"
            "chtold;Mandat;" +
            n + ";" + date + ";K-" + n + ";30;";
    line += "Herr;Peter R\xF6thlisberger;Seestrasse " + std::to_string(row % 200) +
            ";8802 Kilchberg;;01-12345-6;";
    line +=
        amount + ";45.00;12.30;" + amount + ";8.1;" + std::to_string(row % 700) + ".25;CHE-123.456.789 MWST;";
    line += amount + ";" + amount + ";" + std::to_string(row % 9000) + "  55;" + std::to_string(row % 9000) +
            ";55;";
    line += "21 00000 00003 13947 14300 0" + std::to_string(10000 + row % 90000) + ";";
    line += "0100003949753>210000000003139471430009017+ 010001628>;";
    line += n + ";4711;Best. 3.11.25;" + date;
    return line;
}

// The control files are written once per process into a temporary folder, removed at exit.
struct BenchFolder {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("wordbm-bench-" + std::to_string(getpid()));
    BenchFolder() { std::filesystem::create_directories(path); }
    ~BenchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};

const std::string& controlFile(int rows) {
    static BenchFolder folder;
    static std::map<int, std::string> paths;
    auto& path = paths[rows];
    if (path.empty()) {
        path = (folder.path / ("control-" + std::to_string(rows) + ".csv")).string();
        std::ofstream out(path, std::ios::binary);
        out << Header << "\r\n";
        for (int row = 1; row <= rows; ++row) {
            out << invoiceLine(row) << "\r\n";
        }
    }
    return path;
}

double peakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0; // kilobytes on Linux
}

// Seconds per item, shown with an SI prefix ("52n" is 52 ns).
benchmark::Counter perItem(double itemsPerIteration) {
    return benchmark::Counter(itemsPerIteration,
                              benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Heap in use (small blocks and mapped large ones); resident size would count freed pages too.
double heapMegabytes() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd) / 1e6;
}

void reportMemory(benchmark::State& state) {
    state.counters["peak_MB"] = peakMegabytes();
}

void BM_ReadFile(benchmark::State& state) {
    const int rows = static_cast<int>(state.range(0));
    const std::string& path = controlFile(rows);
    for (auto _ : state) {
        CSVfile csv;
        csv.ReadFile(path, ";", "\"", true);
        benchmark::DoNotOptimize(csv.LineCount());
    }
    // What a loaded file keeps, apart from the transient peak of reading it.
    const double before = heapMegabytes();
    CSVfile kept;
    kept.ReadFile(path);
    state.counters["held_MB"] = heapMegabytes() - before;
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(path)));
    state.SetComplexityN(rows);
    state.counters["file_MB"] = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
    state.counters["time_per_row"] = perItem(rows);
    reportMemory(state);
}
BENCHMARK(BM_ReadFile)
    ->Arg(25'000)
    ->Arg(50'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

// The shared cp1252 file read alone, the floor under ReadFile: the difference is the line table.
void BM_ReadAnsiTextAlone(benchmark::State& state) {
    const std::string& path = controlFile(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(wordbm::readAnsiText(path));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(path)));
    reportMemory(state);
}
BENCHMARK(BM_ReadAnsiTextAlone)->Arg(100'000)->Unit(benchmark::kMillisecond);

CSVfile& loadedRun() {
    static CSVfile csv = [] {
        CSVfile loaded;
        loaded.ReadFile(controlFile(100'000), ";", "\"", true);
        return loaded;
    }();
    return csv;
}

// What the merge run does: every invoice line, field after field, by name.
void BM_FieldByName(benchmark::State& state) {
    CSVfile& csv = loadedRun();
    const std::vector<std::string> names{"RgDatum", "KliName",   "KliAdr1",  "KliAdr2",  "KliAdr3",
                                         "KliTot",  "BesrRefNr", "RgNummer", "GeschTxt", "RgDue"};
    for (auto _ : state) {
        for (int line = 1; line <= csv.LineCount(); ++line) {
            for (const std::string& name : names) {
                benchmark::DoNotOptimize(csv.Field(name, line));
            }
        }
    }
    const auto reads = static_cast<double>(csv.LineCount()) * static_cast<double>(names.size());
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(reads));
    state.counters["time_per_field"] = perItem(reads);
    reportMemory(state);
}
BENCHMARK(BM_FieldByName)->Unit(benchmark::kMillisecond);

// Every one of the 55 columns of every line, as a form that uses them all would.
void BM_AllFieldsByNumber(benchmark::State& state) {
    CSVfile& csv = loadedRun();
    for (auto _ : state) {
        for (int line = 1; line <= csv.LineCount(); ++line) {
            for (int field = 1; field <= csv.FieldNameCount(); ++field) {
                benchmark::DoNotOptimize(csv.Field(field, line));
            }
        }
    }
    const auto reads = static_cast<double>(csv.LineCount()) * csv.FieldNameCount();
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(reads));
    state.counters["time_per_field"] = perItem(reads);
    reportMemory(state);
}
BENCHMARK(BM_AllFieldsByNumber)->Unit(benchmark::kMillisecond);

void BM_TypedReads(benchmark::State& state) {
    CSVfile& csv = loadedRun();
    for (auto _ : state) {
        for (int line = 1; line <= csv.LineCount(); ++line) {
            benchmark::DoNotOptimize(csv.FieldCur("KliTot", line));
            benchmark::DoNotOptimize(csv.FieldDate("RgDatum", line));
            benchmark::DoNotOptimize(csv.FieldLong("RgNummer", line));
        }
    }
    const auto reads = static_cast<double>(csv.LineCount()) * 3;
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(reads));
    state.counters["time_per_field"] = perItem(reads);
    reportMemory(state);
}
BENCHMARK(BM_TypedReads)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
