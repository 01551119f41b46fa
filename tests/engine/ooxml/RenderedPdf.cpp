#include "RenderedPdf.h"

#include "PartXml.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace wordbm::ooxml::canvastest {

namespace fs = std::filesystem;

namespace {

constexpr double MmPerPoint = 25.4 / 72.0;

std::string quoted(const fs::path& path) {
    return "'" + path.string() + "'";
}

bool run(const std::string& command) {
    return std::system(command.c_str()) == 0;
}

std::string slurp(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string output(const std::string& command, const fs::path& pdf) {
    const fs::path out = fs::path(pdf).replace_extension(".out.txt");
    return run(command + " " + quoted(pdf) + " " + quoted(out) + " 2>/dev/null") ? slurp(out) : std::string();
}

struct Gray {
    int width = 0;
    int height = 0;
    std::string pixels;

    int at(int column, int row) const {
        return static_cast<unsigned char>(
            pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                   static_cast<std::size_t>(column)]);
    }
};

// pdftoppm's binary PGM: "P5", width, height, maximum, one blank, then the bytes.
Gray readPgm(const fs::path& file) {
    std::istringstream in(slurp(file));
    std::string magic;
    int maximum = 0;
    Gray image;
    in >> magic >> image.width >> image.height >> maximum;
    in.get();
    if (magic != "P5" || maximum != 255 || image.width <= 0 || image.height <= 0) {
        return {};
    }
    image.pixels.resize(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
    in.read(image.pixels.data(), static_cast<std::streamsize>(image.pixels.size()));
    return image;
}

// Page 1 in grey; `crop` holds pdftoppm's -x -y -W -H options, or nothing for the whole page.
Gray render(const fs::path& pdf, int dpi, const std::string& crop) {
    const fs::path prefix = fs::path(pdf).replace_extension("");
    const std::string command = "pdftoppm -gray -singlefile -f 1 -l 1 -r " + std::to_string(dpi) + crop +
                                " " + quoted(pdf) + " " + quoted(prefix) + " 2>/dev/null";
    return run(command) ? readPgm(fs::path(prefix).replace_extension(".pgm")) : Gray();
}

} // namespace

bool RenderedPdf::toolsAvailable() {
    return run("command -v soffice pdftotext pdftoppm pdffonts >/dev/null 2>&1");
}

std::vector<fs::path> RenderedPdf::convert(const std::vector<fs::path>& documents, const fs::path& work) {
    std::string command = "timeout 300 soffice -env:UserInstallation=file://" + (work / "profile").string() +
                          " --headless --convert-to pdf --outdir " + quoted(work);
    std::vector<fs::path> pdfs;
    for (const fs::path& document : documents) {
        command += " " + quoted(document);
        pdfs.push_back(work / document.filename().replace_extension(".pdf"));
    }
    run(command + " >/dev/null 2>&1");
    for (const fs::path& pdf : pdfs) {
        if (!fs::exists(pdf)) {
            return {};
        }
    }
    return pdfs;
}

std::vector<RenderedPdf::Word> RenderedPdf::words(const fs::path& pdf) {
    const auto page = PartXml::parse(output("pdftotext -bbox -f 1 -l 1", pdf));
    std::vector<Word> found;
    for (const pugi::xpath_node hit : page->select_nodes("//word")) {
        const pugi::xml_node node = hit.node();
        found.push_back({node.child_value(), node.attribute("xMin").as_double() * MmPerPoint,
                         node.attribute("yMin").as_double() * MmPerPoint,
                         node.attribute("xMax").as_double() * MmPerPoint,
                         node.attribute("yMax").as_double() * MmPerPoint});
    }
    return found;
}

std::optional<RenderedPdf::Word> RenderedPdf::word(const fs::path& pdf, const std::string& text) {
    for (const Word& candidate : words(pdf)) {
        if (candidate.text == text) {
            return candidate;
        }
    }
    return std::nullopt;
}

std::optional<RenderedPdf::Area> RenderedPdf::darkArea(const fs::path& pdf, const Area& window, int dpi) {
    const double pixelsPerMm = dpi / 25.4;
    const auto x = static_cast<int>(std::floor(window.left * pixelsPerMm));
    const auto y = static_cast<int>(std::floor(window.top * pixelsPerMm));
    const auto width = static_cast<int>(std::ceil((window.right - window.left) * pixelsPerMm));
    const auto height = static_cast<int>(std::ceil((window.bottom - window.top) * pixelsPerMm));
    const Gray image = render(pdf, dpi,
                              " -x " + std::to_string(x) + " -y " + std::to_string(y) + " -W " +
                                  std::to_string(width) + " -H " + std::to_string(height));
    int minX = image.width;
    int minY = image.height;
    int maxX = -1;
    int maxY = -1;
    for (int row = 0; row < image.height; ++row) {
        for (int column = 0; column < image.width; ++column) {
            if (image.at(column, row) < 128) {
                minX = std::min(minX, column);
                minY = std::min(minY, row);
                maxX = std::max(maxX, column);
                maxY = std::max(maxY, row);
            }
        }
    }
    if (maxX < 0) {
        return std::nullopt;
    }
    return Area{(x + minX) / pixelsPerMm, (y + minY) / pixelsPerMm, (x + maxX + 1) / pixelsPerMm,
                (y + maxY + 1) / pixelsPerMm};
}

std::optional<std::size_t> RenderedPdf::differingPixels(const fs::path& first, const fs::path& second,
                                                        int dpi) {
    const Gray one = render(first, dpi, "");
    const Gray other = render(second, dpi, "");
    if (one.pixels.empty() || one.width != other.width || one.height != other.height) {
        return std::nullopt;
    }
    std::size_t count = 0;
    for (std::size_t index = 0; index < one.pixels.size(); ++index) {
        const int difference =
            static_cast<unsigned char>(one.pixels[index]) - static_cast<unsigned char>(other.pixels[index]);
        count += std::abs(difference) > 64 ? 1 : 0;
    }
    return count;
}

std::string RenderedPdf::fonts(const fs::path& pdf) {
    const fs::path out = fs::path(pdf).replace_extension(".fonts.txt");
    return run("pdffonts " + quoted(pdf) + " > " + quoted(out) + " 2>/dev/null") ? slurp(out) : std::string();
}

std::string RenderedPdf::text(const fs::path& pdf) {
    return output("pdftotext -layout", pdf);
}

} // namespace wordbm::ooxml::canvastest
