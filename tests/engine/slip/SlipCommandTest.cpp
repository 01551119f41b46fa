// The engine's payment-slip command: the dialog's choices reach the builder, the person hears of it.
#include "SlipFixture.h"
#include "engine/WordBM.h"
#include "engine/word/Application.h"
#include "engine/word/Document.h"
#include "kit/EnvGuard.h"
#include "kit/MemoryOptions.h"

#include <filesystem>

namespace wordbm::slip::test {
namespace {

// An engine on a copy of Empty.docx whose working copies go below the fixture's folder.
class SlipCommand : public SlipTest {
protected:
    void SetUp() override {
        engine = std::make_unique<WordBM>(ui, options, [] { return ooxml::DocxApplication::create(); });
        engine->SlipBuilder(std::make_unique<modESQR>(ui, engine->QRComponent(), WORDBM_SLIP_IMAGE_DIR));
        form = folder.path() + "/Rechnung.docx";
        std::filesystem::copy_file(std::string(WORDBM_CORPUS_DIR) + "/docx/Empty.docx", form);
        ASSERT_TRUE(engine->mfWBM_OpenWordDoc(form));
        doc = engine->Doc();
        ui.boxes.clear();
    }
    void TearDown() override { engine.reset(); }

    EnvGuard debug{"TARVELL_DEBUG", folder.path()};
    MemoryOptions options;
    std::unique_ptr<WordBM> engine;
    std::string form;
};

TEST_F(SlipCommand, ConfirmedChoicesBuildTheSlipAndSayEingefuegt) {
    SlipChoices choices;
    choices.ST = false;
    ui.slipAnswers = {choices, std::nullopt};

    engine->mfWBM_ESQRgo();
    EXPECT_EQ(ui.slipDialogDocs, std::vector<std::string>{form});
    EXPECT_EQ(countOf(word::wd::msoCanvas), 2);
    EXPECT_EQ(ui.boxes, (std::vector{ScriptedUserInterface::Box{"Eingefügt", msgbox::Information,
                                                                "Einzahlungsschein QR"}}));
    EXPECT_TRUE(engine->Word()->ScreenUpdating());

    engine->mfWBM_ESQRgo();
    EXPECT_EQ(countOf(word::wd::msoCanvas), 2) << "cancelled: nothing changes";
    EXPECT_EQ(ui.boxes.size(), 1U);
}

} // namespace
} // namespace wordbm::slip::test
