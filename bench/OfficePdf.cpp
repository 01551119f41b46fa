// PDF export per invoice: the warm worker pool of WordBM against a plain
// `soffice --headless --convert-to pdf` of the same one-page documents, in one run, as a ratio.
// Each document is timed on its own; the summary gives the medians per document.
#include "Timing.h"
#include "engine/office/OfficeConverter.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace fs = std::filesystem;
using bench::Clock;
using bench::median;
using bench::millisecondsSince;

namespace {

const char* const Documents[] = {"Letterhead.docx", "German text.docx", "Fax.docx", "test_winword2010.docx",
                                 "recipe_template.docx"};

struct BenchFolder {
    fs::path path = fs::temp_directory_path() / ("wordbm-bench-pdf-" + std::to_string(::getpid()));
    std::vector<std::string> documents;
    BenchFolder() {
        fs::create_directories(path / "out");
        for (const char* name : Documents) {
            const fs::path target = path / name;
            fs::copy_file(fs::path(WORDBM_CORPUS_DIR) / "docx" / name, target,
                          fs::copy_options::overwrite_existing);
            documents.push_back(target.string());
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

std::vector<double> warmSamples, warmArchiveSamples, sofficeSamples;

bool runSoffice(const std::vector<std::string>& documents) {
    std::vector<std::string> arguments{"soffice",
                                       "--headless",
                                       "-env:UserInstallation=file://" +
                                           (folder().path / "soffice-profile").string(),
                                       "--convert-to",
                                       "pdf",
                                       "--outdir",
                                       (folder().path / "out").string()};
    arguments.insert(arguments.end(), documents.begin(), documents.end());
    std::vector<char*> argv;
    for (auto& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = -1;
    const int error = ::posix_spawnp(&pid, "soffice", &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    return error == 0 && ::waitpid(pid, &status, 0) == pid && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

void warmExport(benchmark::State& state, bool pdfA, std::vector<double>& samples) {
    wordbm::office::OfficeConverter converter;
    converter.setPoolSize(1);
    converter.warmUp();
    const auto& documents = folder().documents;
    std::size_t next = 0;
    for (auto _ : state) {
        const auto& document = documents[next++ % documents.size()];
        const auto start = Clock::now();
        converter.toPdf(document, (folder().path / "out" / "warm.pdf").string(), pdfA);
        const double elapsed = millisecondsSince(start);
        samples.push_back(elapsed);
        state.SetIterationTime(elapsed / 1000.0);
    }
}

void BM_WarmPdfExport(benchmark::State& state) {
    warmExport(state, false, warmSamples);
}
void BM_WarmPdfAExport(benchmark::State& state) {
    warmExport(state, true, warmArchiveSamples);
}

// One soffice run per document, as a script calling it for each invoice would do; the profile
// is made once beforehand, so that its first-run setup is not counted.
void BM_SofficeConvertTo(benchmark::State& state) {
    const auto& documents = folder().documents;
    if (!runSoffice({documents.front()})) {
        state.SkipWithError("soffice --convert-to failed");
        return;
    }
    std::size_t next = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        runSoffice({documents[next++ % documents.size()]});
        const double elapsed = millisecondsSince(start);
        sofficeSamples.push_back(elapsed);
        state.SetIterationTime(elapsed / 1000.0);
    }
}

BENCHMARK(BM_WarmPdfExport)->Iterations(50)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WarmPdfAExport)->Iterations(50)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SofficeConvertTo)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    const double warm = median(warmSamples);
    const double archive = median(warmArchiveSamples);
    const double soffice = median(sofficeSamples);
    std::printf("\nMedian per document: warm PDF %.1f ms, warm PDF/A %.1f ms, soffice --convert-to %.1f ms\n",
                warm, archive, soffice);
    if (warm > 0 && soffice > 0) {
        std::printf("soffice --convert-to / warm PDF export: %.1fx\n", soffice / warm);
    }
    return 0;
}
