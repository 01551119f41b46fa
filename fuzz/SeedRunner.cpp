// The driver of a fuzz target built without libFuzzer: every file of the folders (or the files)
// named on the command line goes once through LLVMFuzzerTestOneInput, so the tests replay each seed
// and each input a fuzzer ever found. Options in libFuzzer's form ("-runs=0") are accepted and
// ignored, so a test line works with either driver.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

// A missing folder is a broken setup, not an empty one: the test must not pass on no input.
bool collect(const fs::path& where, std::vector<fs::path>& inputs) {
    std::error_code error;
    if (fs::is_regular_file(where, error)) {
        inputs.push_back(where);
        return true;
    }
    if (!fs::is_directory(where, error)) {
        std::fprintf(stderr, "SeedRunner: %s is neither a file nor a folder\n", where.c_str());
        return false;
    }
    for (const auto& entry : fs::recursive_directory_iterator(where, error)) {
        if (entry.is_regular_file()) {
            inputs.push_back(entry.path());
        }
    }
    return !error;
}

std::string contentOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace

int main(int argc, char** argv) {
    std::vector<fs::path> inputs;
    for (int i = 1; i < argc; ++i) {
        if (argv[i][0] == '-') {
            continue;
        }
        if (!collect(argv[i], inputs)) {
            return 1;
        }
    }
    if (inputs.empty()) {
        std::fprintf(stderr, "SeedRunner: no inputs\n");
        return 1;
    }
    std::sort(inputs.begin(), inputs.end());
    for (const auto& input : inputs) {
        // Named before it runs: a crash then shows which input caused it.
        std::fprintf(stderr, "SeedRunner: %s\n", input.c_str());
        const std::string bytes = contentOf(input);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::fprintf(stderr, "SeedRunner: %zu inputs ran\n", inputs.size());
    return 0;
}
