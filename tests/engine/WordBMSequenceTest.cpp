#include "EngineFixture.h"

#include <random>

namespace wordbm::testing {
namespace {

// Whatever a person does, short of confirming the copy-back twice, the originals stay as they were.
class CommandSequence : public EngineTest, public ::testing::WithParamInterface<unsigned> {
protected:
    void SetUp() override {
        TestForm letter;
        letter.mergeField("KliName").text(" ").bookmark("kdx5_123456_RgDatum", "1.1.2024").text(" ");
        letter.bookmark("kdx6_KliKonto_000001", "KliKonto").mergeField("Unbekannt").text("\r");
        paths = {form("A.docx", letter), form("B.docx", letter),
                 original("Lauf.csv", "RgDatum;KliName\r\n1.2.2024;Muster")};
    }

    void runOne(std::mt19937& random) {
        const auto pick = [&random](int count) {
            return std::uniform_int_distribution<int>(0, count - 1)(random);
        };
        for (int i = 0; i < 4; ++i) {
            // Never two Yes in a row: the second copy-back question can then not be confirmed.
            ui.answers.push_back(i % 2 == 0 ? std::vector<int>{6, 7, 2}[static_cast<std::size_t>(pick(3))]
                                            : std::vector<int>{7, 2}[static_cast<std::size_t>(pick(2))]);
        }
        switch (pick(10)) {
        case 0:
            engine->mfWBM_OpenWordDoc(paths[static_cast<std::size_t>(pick(2))]);
            break;
        case 1:
            engine->mfWBM_OpenCSVDoc(paths[2]);
            break;
        case 2:
            engine->mfWBM_Analyze();
            break;
        case 3:
            engine->mfWBM_Replace();
            break;
        case 4:
            engine->mfWBM_Reset();
            break;
        case 5:
            engine->mfWBM_Verify();
            break;
        case 6:
            engine->mfWBM_Insert("KliName");
            break;
        case 7:
            engine->mfWBM_OpenWordDoc("");
            break;
        case 8:
            engine->OnEvent(WindowEvent::WordCopy, {});
            break;
        default:
            engine->mfWBM_Quit(pick(2) == 0);
            break;
        }
    }

    std::vector<std::string> paths;
};

TEST_P(CommandSequence, LeavesTheOriginalsAlone) {
    std::mt19937 random(GetParam());
    for (int step = 0; step < 40; ++step) {
        runOne(random);
        ui.answers.clear();
    }
    for (const auto& box : ui.boxes) {
        ASSERT_NE(box.text, "Kopiert");
    }
    expectOriginalsUntouched();
}

INSTANTIATE_TEST_SUITE_P(Seeds, CommandSequence, ::testing::Range(1u, 13u));

} // namespace
} // namespace wordbm::testing
