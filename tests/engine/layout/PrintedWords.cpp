#include "PrintedWords.h"

#include <array>
#include <cstdio>
#include <memory>
#include <regex>

namespace wordbm::test {

namespace {

std::string unescaped(std::string text) {
    const std::array<std::pair<const char*, const char*>, 5> entities = {
        {{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&amp;", "&"}}};
    for (const auto& [from, to] : entities) {
        for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + 1)) {
            text.replace(at, std::string(from).size(), to);
        }
    }
    return text;
}

} // namespace

std::vector<PrintedWordBox> printedWords(const std::string& pdf) {
    const std::string command = "pdftotext -bbox '" + pdf + "' - 2>/dev/null";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
    std::vector<PrintedWordBox> words;
    std::array<char, 4096> buffer{};
    const std::regex word(
        R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">(.*)</word>)re");
    int page = -1;
    while (pipe && std::fgets(buffer.data(), static_cast<int>(buffer.size()), pipe.get())) {
        const std::string line = buffer.data();
        std::smatch m;
        if (line.find("<page ") != std::string::npos) {
            ++page;
        } else if (std::regex_search(line, m, word)) {
            words.push_back(
                {page, unescaped(m[5]), std::stod(m[1]), std::stod(m[2]), std::stod(m[3]), std::stod(m[4])});
        }
    }
    return words;
}

} // namespace wordbm::test
