#include "engine/layout/PageMap.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace wordbm {

// A story's letters (its text without gaps) and its words as runs of them.
struct PageMapToken {
    std::u16string key;
    std::size_t first = 0; // index of its first letter in the story's letters
};

struct PageMapLetters {
    std::u16string letters;    // folded
    std::vector<long> offsets; // the story offset of each letter
    std::vector<PageMapToken> tokens;
};

namespace {

// Paragraph and cell marks, tabs, breaks, field marks and the wide spaces all part words; in print
// they are gaps, not letters.
bool isGap(char16_t c) {
    return c <= 0x20 || c == 0xA0 || (c >= 0x2000 && c <= 0x200B) || c == 0x3000 || c == 0xFEFF;
}

// Capitals set by a style (all caps, small caps) print in another case than they are typed.
char16_t folded(char16_t c) {
    if ((c >= u'A' && c <= u'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7)) {
        return static_cast<char16_t>(c + 32);
    }
    return c;
}

// A soft hyphen prints only at a line's end; it is no letter of the word.
PageMapLetters lettersOf(const std::u16string& text) {
    PageMapLetters result;
    bool inWord = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (isGap(c)) {
            inWord = false;
            continue;
        }
        if (c == 0xAD) {
            continue;
        }
        if (!inWord) {
            result.tokens.push_back({{}, result.letters.size()});
            inWord = true;
        }
        result.letters.push_back(folded(c));
        result.offsets.push_back(static_cast<long>(i));
        result.tokens.back().key.push_back(folded(c));
    }
    return result;
}

std::u16string keyOf(const std::u16string& printed) {
    std::u16string key;
    for (const char16_t c : printed) {
        if (!isGap(c) && c != 0xAD) {
            key.push_back(folded(c));
        }
    }
    return key;
}

// Consecutive words equal in a story and on the page.
struct Run {
    int story;
    std::size_t word;
    std::size_t printed;
    std::size_t length;
};

bool sameLine(const PageBox& a, const PageBox& b) {
    const double overlap = std::min(a.bottom, b.bottom) - std::max(a.top, b.top);
    return overlap > 0.5 * std::min(a.height(), b.height());
}

} // namespace

PageMap::PageMap(const std::vector<Story>& stories, const std::vector<PrintedPage>& pages) {
    std::vector<PageMapLetters> letters;
    for (const Story& story : stories) {
        letters.push_back(lettersOf(story.text));
        claimed_.emplace_back(letters.back().letters.size(), false);
    }
    pages_.resize(pages.size());
    for (std::size_t page = 0; page < pages.size(); ++page) {
        matchPage(static_cast<int>(page), stories, pages[page], letters);
    }
}

namespace {

// Which letters of which story a printed word stands for.
struct Span {
    int story = -1;
    std::size_t first = 0;
    std::size_t count = 0;
};

// Runs of equal words, found from every word pair that starts one.
std::vector<Run> runsOf(const std::vector<PageMapLetters>& stories, const std::vector<std::u16string>& keys) {
    std::unordered_map<std::u16string, std::vector<std::size_t>> where;
    for (std::size_t j = 0; j < keys.size(); ++j) {
        if (!keys[j].empty()) {
            where[keys[j]].push_back(j);
        }
    }
    std::vector<Run> runs;
    for (int s = 0; s < static_cast<int>(stories.size()); ++s) {
        const auto& tokens = stories[static_cast<std::size_t>(s)].tokens;
        for (std::size_t i = 0; i < tokens.size(); ++i) {
            const auto found = where.find(tokens[i].key);
            if (found == where.end()) {
                continue;
            }
            for (const std::size_t j : found->second) {
                if (i > 0 && j > 0 && tokens[i - 1].key == keys[j - 1]) {
                    continue; // inside a run that starts earlier
                }
                std::size_t length = 1;
                while (i + length < tokens.size() && j + length < keys.size() &&
                       tokens[i + length].key == keys[j + length]) {
                    ++length;
                }
                runs.push_back({s, i, j, length});
            }
        }
    }
    // Longest first; among equals the stories' order meets the order of print.
    std::stable_sort(runs.begin(), runs.end(),
                     [](const Run& a, const Run& b) { return a.length > b.length; });
    return runs;
}

} // namespace

void PageMap::matchPage(int page, const std::vector<Story>& stories, const PrintedPage& printed,
                        const std::vector<PageMapLetters>& letters) {
    std::vector<std::u16string> keys;
    for (const PrintedWord& word : printed.words) {
        keys.push_back(keyOf(word.text));
    }
    std::vector<std::vector<bool>> used = claimed_;
    for (std::size_t s = 0; s < stories.size(); ++s) {
        if (stories[s].repeats) {
            std::fill(used[s].begin(), used[s].end(), false);
        }
    }
    std::vector<Span> spans(keys.size());
    // Letters [first, first + count) of a story, unused and equal to the printed word j.
    const auto fits = [&](int s, std::size_t first, std::size_t j) {
        const auto& story = letters[static_cast<std::size_t>(s)].letters;
        if (keys[j].empty() || first + keys[j].size() > story.size()) {
            return false;
        }
        for (std::size_t k = 0; k < keys[j].size(); ++k) {
            if (story[first + k] != keys[j][k] || used[static_cast<std::size_t>(s)][first + k]) {
                return false;
            }
        }
        return true;
    };
    const auto assign = [&](std::size_t j, int s, std::size_t first) {
        spans[j] = {s, first, keys[j].size()};
        for (std::size_t k = 0; k < keys[j].size(); ++k) {
            used[static_cast<std::size_t>(s)][first + k] = true;
        }
    };

    // Whole words first, in runs, the longest runs before the shorter ones.
    const std::vector<Run> runs = runsOf(letters, keys);
    const auto take = [&](const Run& run) {
        const auto& tokens = letters[static_cast<std::size_t>(run.story)].tokens;
        for (std::size_t k = 0; k < run.length; ++k) {
            if (spans[run.printed + k].story < 0 &&
                fits(run.story, tokens[run.word + k].first, run.printed + k)) {
                assign(run.printed + k, run.story, tokens[run.word + k].first);
            }
        }
    };
    // A lone word goes first where a neighbour on the page is its neighbour in the story.
    const auto supported = [&](const Run& run) {
        const std::size_t first = letters[static_cast<std::size_t>(run.story)].tokens[run.word].first;
        const bool before = run.printed > 0 && spans[run.printed - 1].story == run.story &&
                            spans[run.printed - 1].first + spans[run.printed - 1].count <= first;
        const bool after = run.printed + 1 < spans.size() && spans[run.printed + 1].story == run.story &&
                           spans[run.printed + 1].first > first;
        return before || after;
    };
    for (const Run& run : runs) {
        if (run.length > 1) {
            take(run);
        }
    }
    for (const bool needSupport : {true, false}) {
        for (const Run& run : runs) {
            if (run.length == 1 && (!needSupport || supported(run))) {
                take(run);
            }
        }
    }

    // Then the words that print apart but stand together in a story (paragraphs the story's text
    // runs together, a word broken at a narrow box's edge): letter by letter, on from the word
    // printed before, or back from the word printed after.
    const auto chain = [&] {
        for (bool changed = true; changed;) {
            changed = false;
            for (std::size_t j = 0; j < keys.size(); ++j) {
                if (spans[j].story >= 0) {
                    continue;
                }
                if (j > 0 && spans[j - 1].story >= 0 &&
                    fits(spans[j - 1].story, spans[j - 1].first + spans[j - 1].count, j)) {
                    assign(j, spans[j - 1].story, spans[j - 1].first + spans[j - 1].count);
                    changed = true;
                } else if (j + 1 < keys.size() && spans[j + 1].story >= 0 &&
                           spans[j + 1].first >= keys[j].size() &&
                           fits(spans[j + 1].story, spans[j + 1].first - keys[j].size(), j)) {
                    assign(j, spans[j + 1].story, spans[j + 1].first - keys[j].size());
                    changed = true;
                }
            }
        }
    };
    chain();
    // Last, a word that begins a longer word of a story, where nothing printed beside it helps.
    for (std::size_t j = 0; j < keys.size(); ++j) {
        for (int s = 0; s < static_cast<int>(letters.size()) && spans[j].story < 0; ++s) {
            for (const PageMapToken& token : letters[static_cast<std::size_t>(s)].tokens) {
                if (token.key.size() > keys[j].size() && token.key.compare(0, keys[j].size(), keys[j]) == 0 &&
                    fits(s, token.first, j)) {
                    assign(j, s, token.first);
                    break;
                }
            }
        }
    }
    chain();

    auto& placed = pages_[static_cast<std::size_t>(page)];
    for (std::size_t j = 0; j < keys.size(); ++j) {
        const Span& span = spans[j];
        if (span.story < 0) {
            continue;
        }
        const auto s = static_cast<std::size_t>(span.story);
        const PrintedWord& word = printed.words[j];
        std::vector<PageBox> boxes;
        for (std::size_t k = 0; k < word.text.size() && k < word.chars.size(); ++k) {
            if (!isGap(word.text[k]) && word.text[k] != 0xAD) {
                boxes.push_back(word.chars[k]);
            }
        }
        if (boxes.empty()) {
            continue;
        }
        for (std::size_t k = 0; k < span.count; ++k) {
            if (!stories[s].repeats) {
                claimed_[s][span.first + k] = true;
            }
            // Letters one to one where the counts agree; a ligature's box spreads evenly.
            const std::size_t b = boxes.size() == span.count ? k : k * boxes.size() / span.count;
            placed.push_back({{span.story, letters[s].offsets[span.first + k]}, boxes[b]});
        }
    }
}

std::optional<StoryPoint> PageMap::at(int page, double x, double y) const {
    if (page < 0 || page >= static_cast<int>(pages_.size())) {
        return std::nullopt;
    }
    const Placed* best = nullptr;
    double bestDistance = std::numeric_limits<double>::max();
    for (const Placed& p : pages_[static_cast<std::size_t>(page)]) {
        // Off the line costs more than along it; where the boxes of two lines overlap, the line
        // whose middle is nearer wins.
        const double dx = x < p.box.left ? p.box.left - x : (x > p.box.right ? x - p.box.right : 0);
        const double dy = y < p.box.top ? p.box.top - y : (y > p.box.bottom ? y - p.box.bottom : 0);
        const double d = std::hypot(dx, 4 * dy) + 0.01 * std::abs(y - (p.box.top + p.box.bottom) / 2);
        if (d < bestDistance) {
            best = &p;
            bestDistance = d;
        }
    }
    if (!best) {
        return std::nullopt;
    }
    StoryPoint point = best->point;
    if (x > (best->box.left + best->box.right) / 2) {
        ++point.offset;
    }
    return point;
}

std::vector<PlacedBox> PageMap::boxes(int story, long start, long end) const {
    std::vector<PlacedBox> result;
    for (int page = 0; page < static_cast<int>(pages_.size()); ++page) {
        for (const Placed& p : pages_[static_cast<std::size_t>(page)]) {
            if (p.point.story != story) {
                continue;
            }
            PageBox box = p.box;
            if (start == end) {
                // A collapsed range: a narrow box before the character behind it.
                if (p.point.offset != start) {
                    continue;
                }
                box.right = box.left + 1.5;
                box.left -= 1.5;
            } else if (p.point.offset < start || p.point.offset >= end) {
                continue;
            }
            if (!result.empty() && result.back().page == page && sameLine(result.back().box, box)) {
                result.back().box = result.back().box.united(box);
            } else {
                result.push_back({page, box});
            }
        }
    }
    return result;
}

std::size_t PageMap::placedCount() const {
    std::size_t count = 0;
    for (const auto& page : pages_) {
        count += page.size();
    }
    return count;
}

} // namespace wordbm
