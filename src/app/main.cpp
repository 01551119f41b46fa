#include "app/BatchCheck.h"
#include "app/FormInspection.h"
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
    std::string form;
    int row = 0;
    bool text = false;
    bool json = false;
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

void addInspect(CLI::App& app, VerbOptions& options) {
    auto* inspect =
        app.add_subcommand("inspect", "List every story of a form with its bookmarks, fields and shapes");
    inspect->add_option("form", options.form, "Word form (.docx or .docm)")->required();
    inspect->add_flag("--json", options.json, "print JSON instead of text");
    inspect->callback([&options] {
        options.exitCode = wordbm::FormInspection(std::cout, std::cerr).run(options.form, options.json);
    });
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"WordBM: bookmarks, merge and Swiss QR-bill for Word invoice forms", "wordbm"};
    app.set_version_flag("--version", versionText());
    VerbOptions options;
    addCheck(app, options);
    addQrcode(app, options);
    addInspect(app, options);
    CLI11_PARSE(app, argc, argv);
    return options.exitCode;
}
