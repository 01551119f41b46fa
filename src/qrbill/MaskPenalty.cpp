#include "qrbill/MaskPenalty.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace wordbm {

namespace {

constexpr long SameColourRun = 3;   // N1, for five in a row, and one more for each further module
constexpr long SameColourBlock = 3; // N2
constexpr long FinderLike = 40;     // N3
constexpr long Imbalance = 10;      // N4

// The last seven run lengths of a line, newest first. The light area outside the symbol counts as
// light modules, as wide as the symbol, at both ends of the line.
class RunHistory {
public:
    explicit RunHistory(int size) : size_(size) {}

    void add(int length) {
        if (runs_[0] == 0) {
            length += size_;
        }
        // By hand: a library move of six numbers costs more than the shift itself.
        for (std::size_t i = runs_.size() - 1; i > 0; --i) {
            runs_[i] = runs_[i - 1];
        }
        runs_[0] = length;
    }

    // Dark, light, dark x3, light, dark at 1:1:3:1:1, with four light modules before or after it:
    // each side with such a light area counts once.
    int finderPatterns() const {
        const int n = runs_[1];
        const bool core = n > 0 && runs_[2] == n && runs_[3] == 3 * n && runs_[4] == n && runs_[5] == n;
        if (!core) {
            return 0;
        }
        return (runs_[0] >= 4 * n && runs_[6] >= n ? 1 : 0) + (runs_[6] >= 4 * n && runs_[0] >= n ? 1 : 0);
    }

    int finish(bool dark, int length) {
        if (dark) {
            add(length);
            length = 0;
        }
        add(length + size_);
        return finderPatterns();
    }

private:
    int size_;
    std::array<int, 7> runs_{};
};

} // namespace

long MaskPenalty::score(const std::vector<std::uint8_t>& modules, int size) {
    long total = 0;
    for (int i = 0; i < size; ++i) {
        total += lineScore(modules.data() + static_cast<std::ptrdiff_t>(i) * size, 1, size);
        total += lineScore(modules.data() + i, size, size);
    }
    return total + blockScore(modules, size) + balanceScore(modules, size);
}

long MaskPenalty::lineScore(const std::uint8_t* first, int step, int size) {
    long total = 0;
    RunHistory history(size);
    bool dark = false;
    int run = 0;
    for (int i = 0; i < size; ++i) {
        const bool module = first[static_cast<std::ptrdiff_t>(i) * step] != 0;
        if (module == dark) {
            ++run;
            total += run == 5 ? SameColourRun : run > 5 ? 1 : 0;
            continue;
        }
        history.add(run);
        if (!dark) {
            total += history.finderPatterns() * FinderLike;
        }
        dark = module;
        run = 1;
    }
    return total + history.finish(dark, run) * FinderLike;
}

long MaskPenalty::blockScore(const std::vector<std::uint8_t>& modules, int size) {
    long total = 0;
    for (int y = 0; y + 1 < size; ++y) {
        const std::uint8_t* top = modules.data() + static_cast<std::ptrdiff_t>(y) * size;
        const std::uint8_t* bottom = top + size;
        long blocks = 0;
        for (int x = 0; x + 1 < size; ++x) {
            // Without branches: the colours are as good as random, and a guessed branch would miss half.
            blocks +=
                static_cast<long>((top[x] == top[x + 1]) & (top[x] == bottom[x]) & (top[x] == bottom[x + 1]));
        }
        total += blocks * SameColourBlock;
    }
    return total;
}

// Ten points for each step of 5 % by which the dark share lies away from half, the first step free;
// a side is odd, so the share is never exactly half.
long MaskPenalty::balanceScore(const std::vector<std::uint8_t>& modules, int size) {
    const long dark = std::count(modules.begin(), modules.end(), std::uint8_t{1});
    const long all = static_cast<long>(size) * size;
    const long steps = (std::labs(dark * 20 - all * 10) + all - 1) / all - 1;
    return steps * Imbalance;
}

} // namespace wordbm
