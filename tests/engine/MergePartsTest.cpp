// The merge run's small parts: names given out once, and the printer's turns.
#include "engine/merge/InvoiceMaker.h"
#include "engine/merge/OutputNames.h"
#include "engine/merge/PrintTurns.h"

#include <gtest/gtest.h>
#include <mutex>
#include <thread>
#include <vector>

namespace wordbm {
namespace {

TEST(OutputNames, ANameIsGivenOutOnceWhateverItsExtensionOrLetterCase) {
    OutputNames names;
    EXPECT_TRUE(names.claim("/r/out/10400000-Müller.docx"));
    EXPECT_FALSE(names.claim("/r/out/10400000-Müller.docx"));
    EXPECT_FALSE(names.claim("/r/out/10400000-MÜLLER.docm"));
    EXPECT_FALSE(names.claim("/r/out/sub/../10400000-müller.pdf"));
    EXPECT_TRUE(names.claim("/r/out/10400000-Mueller.docx"));
    EXPECT_TRUE(names.claim("/r/out.2/10400000-Müller"));
}

TEST(OutputNames, TheRunsOwnFilesAreNeverGivenOut) {
    OutputNames names;
    names.reserve("/r/Rechnung.docx");
    names.reserve("/r/Lauf.csv");
    names.reserve("/r/Beilage.pdf");
    names.reserve("");
    EXPECT_FALSE(names.claim("/r/rechnung.docx"));
    EXPECT_FALSE(names.claim("/r/Lauf.csv"));
    // Its PDF would replace a file of the run.
    EXPECT_FALSE(names.claim("/r/Beilage.docx"));
    EXPECT_TRUE(names.claim("/r/Rechnung.docm"));
}

TEST(InvoiceMaker, ThePdfTakesTheInvoicesNameWithoutItsExtension) {
    EXPECT_EQ(InvoiceMaker::pdfPathOf("/r/out/24100-Rechnung.docx"), "/r/out/24100-Rechnung.pdf");
    EXPECT_EQ(InvoiceMaker::pdfPathOf("/r/out.v2/24100"), "/r/out.v2/24100.pdf");
}

TEST(PrintTurns, InvoicesPrintInRowOrderWhicheverThreadIsReadyFirst) {
    PrintTurns turns;
    std::mutex mutex;
    std::vector<std::size_t> printed;
    std::vector<std::thread> threads;
    for (std::size_t sequence = 6; sequence-- > 0;) {
        threads.emplace_back([&, sequence] {
            turns.wait(sequence);
            {
                const std::lock_guard lock(mutex);
                printed.push_back(sequence);
            }
            turns.done(sequence);
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(printed, (std::vector<std::size_t>{0, 1, 2, 3, 4, 5}));
}

TEST(PrintTurns, OnlyTheCurrentTurnCanBeEnded) {
    PrintTurns turns;
    turns.done(1); // not its turn: ignored
    turns.done(0);
    std::thread second([&] { turns.wait(1); });
    second.join();
    SUCCEED();
}

} // namespace
} // namespace wordbm
