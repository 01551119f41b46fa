#include "app/Version.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <string>

namespace {

std::string versionText() {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%02d.%02d.%03d - %s", wordbm::version::Major,
                  wordbm::version::Minor, wordbm::version::Revision, wordbm::version::ReleaseDate);
    return std::string(wordbm::version::Title) + " " + buffer;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"WordBM: bookmarks, merge and Swiss QR-bill for Word invoice forms", "wordbm"};
    app.set_version_flag("--version", versionText());
    CLI11_PARSE(app, argc, argv);
    return 0;
}
