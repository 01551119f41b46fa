#include "RenderedPage.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

namespace wordbm::slip::test {

namespace {

namespace fs = std::filesystem;

constexpr double MmPerPoint = 25.4 / 72.0;

std::string quoted(const std::string& path) {
    return "'" + path + "'";
}

bool run(const std::string& command) {
    return std::system(command.c_str()) == 0;
}

std::string slurp(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// pdftotext -bbox writes every word as <word xMin=".." yMin=".." xMax=".." yMax="..">text</word>, in points.
std::vector<RenderedPage::Word> readWords(const std::string& html) {
    static const std::regex word(
        R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re");
    std::vector<RenderedPage::Word> words;
    for (auto it = std::sregex_iterator(html.begin(), html.end(), word); it != std::sregex_iterator(); ++it) {
        const auto& match = *it;
        words.push_back({match[5].str(),
                         {std::stod(match[1]) * MmPerPoint, std::stod(match[2]) * MmPerPoint,
                          std::stod(match[3]) * MmPerPoint, std::stod(match[4]) * MmPerPoint}});
    }
    return words;
}

} // namespace

bool RenderedPage::toolsAvailable() {
    return run("command -v pdftoppm pdftotext pdffonts >/dev/null 2>&1");
}

std::string RenderedPage::fonts(const std::string& pdf) {
    const std::string listing = pdf + ".fonts.txt";
    return run("pdffonts " + quoted(pdf) + " > " + quoted(listing) + " 2>/dev/null") ? slurp(listing)
                                                                                     : std::string();
}

RenderedPage::RenderedPage(const std::string& pdf, int dpi) : dpi_(dpi) {
    const std::string prefix = fs::path(pdf).replace_extension("").string();
    if (!run("pdftoppm -gray -singlefile -f 1 -l 1 -r " + std::to_string(dpi) + " " + quoted(pdf) + " " +
             quoted(prefix) + " 2>/dev/null")) {
        return;
    }
    // Binary PGM: "P5", width, height, maximum, one blank, then a byte per pixel.
    std::istringstream in(slurp(prefix + ".pgm"));
    std::string magic;
    int maximum = 0;
    in >> magic >> width_ >> height_ >> maximum;
    in.get();
    if (magic != "P5" || maximum != 255 || width_ <= 0 || height_ <= 0) {
        width_ = height_ = 0;
        return;
    }
    pixels_.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
    in.read(reinterpret_cast<char*>(pixels_.data()), static_cast<std::streamsize>(pixels_.size()));
    const std::string html = prefix + ".html";
    if (run("pdftotext -bbox -f 1 -l 1 " + quoted(pdf) + " " + quoted(html) + " 2>/dev/null")) {
        words_ = readWords(slurp(html));
    }
}

std::optional<RenderedPage::Area> RenderedPage::darkArea(const Area& window) const {
    const double perMm = dpi_ / 25.4;
    const auto pixel = [perMm](double mm) { return static_cast<int>(mm * perMm); };
    int left = width_, top = height_, right = -1, bottom = -1;
    for (int y = std::max(0, pixel(window.top)); y < std::min(height_, pixel(window.bottom)); ++y) {
        for (int x = std::max(0, pixel(window.left)); x < std::min(width_, pixel(window.right)); ++x) {
            if (pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + x] < 128) {
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        }
    }
    if (right < 0) {
        return std::nullopt;
    }
    return Area{left / perMm, top / perMm, (right + 1) / perMm, (bottom + 1) / perMm};
}

std::vector<RenderedPage::Word> RenderedPage::wordsIn(const std::string& text, const Area& area) const {
    std::vector<Word> found;
    for (const Word& word : words_) {
        if (word.text == text && area.contains(word.box)) {
            found.push_back(word);
        }
    }
    return found;
}

} // namespace wordbm::slip::test
