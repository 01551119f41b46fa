#include "app/BatchCheck.h"
#include "app/Version.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>
#include <string>

namespace {

std::string versionText() {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%02d.%02d.%03d - %s", wordbm::version::Major,
                  wordbm::version::Minor, wordbm::version::Revision, wordbm::version::ReleaseDate);
    return std::string(wordbm::version::Title) + " " + buffer;
}

// What the verbs were given; CLI11 writes into it while parsing.
struct VerbOptions {
    std::string csv;
    std::string png;
    int row = 0;
    bool text = false;
    int exitCode = 0;
};

void addCheck(CLI::App& app, VerbOptions& options) {
    auto* check =
        app.add_subcommand("check", "List the QR-bill warnings of every invoice row of a control file");
    check->add_option("--csv", options.csv, "CSV control file")->required();
    check->callback(
        [&options] { options.exitCode = wordbm::BatchCheck(std::cout, std::cerr).check(options.csv); });
}

void addQrcode(CLI::App& app, VerbOptions& options) {
    auto* qrcode = app.add_subcommand("qrcode", "Write the QR code or the payload of one invoice row");
    qrcode->add_option("--csv", options.csv, "CSV control file")->required();
    qrcode->add_option("--row", options.row, "data line, counted from 1")->required();
    qrcode->add_option("--png", options.png, "write the QR code as PNG to this file");
    qrcode->add_flag("--text", options.text, "print the payload bytes exactly (the default without --png)");
    qrcode->callback([&options] {
        options.exitCode =
            wordbm::BatchCheck(std::cout, std::cerr)
                .qrcode(options.csv, options.row, options.png, options.text || options.png.empty());
    });
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"WordBM: bookmarks, merge and Swiss QR-bill for Word invoice forms", "wordbm"};
    app.set_version_flag("--version", versionText());
    VerbOptions options;
    addCheck(app, options);
    addQrcode(app, options);
    CLI11_PARSE(app, argc, argv);
    return options.exitCode;
}
