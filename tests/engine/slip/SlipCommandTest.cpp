// The engine's payment-slip command: the dialog's choices reach the builder, and the person hears
// of the result.
#include "SlipFixture.h"
#include "engine/OptionsPort.h"
#include "engine/WordBM.h"
#include "engine/word/Application.h"
#include "engine/word/Document.h"
#include "engine/word/Range.h"
#include "engine/word/Shapes.h"

#include <cstdlib>
#include <filesystem>
#include <map>

namespace wordbm::slip::test {
namespace {

class NoOptions : public OptionsPort {
public:
    std::string get(const std::string& key) override { return values[key]; }
    void set(const std::string& key, const std::string& value) override { values[key] = value; }
    std::map<std::string, std::string> values;
};

// An engine whose working copies go below the fixture's folder, with modESQR as its slip builder.
class SlipCommand : public SlipTest {
protected:
    void SetUp() override {
        if (const char* debug = std::getenv("TARVELL_DEBUG")) {
            savedDebug_ = debug;
        }
        ::setenv("TARVELL_DEBUG", folder.path().c_str(), 1);
        engine = std::make_unique<WordBM>(ui, options, [] { return ooxml::DocxApplication::create(); });
        engine->SlipBuilder(
            std::make_unique<modESQR>(engine->UI(), engine->QRComponent(), WORDBM_SLIP_IMAGE_DIR));
        form = folder.path() + "/Rechnung.docx";
        std::filesystem::copy_file(corpusPath("Empty.docx"), form);
        ASSERT_TRUE(engine->mfWBM_OpenWordDoc(form));
        ui.boxes.clear();
    }
    void TearDown() override {
        engine.reset();
        savedDebug_.empty() ? ::unsetenv("TARVELL_DEBUG") : ::setenv("TARVELL_DEBUG", savedDebug_.c_str(), 1);
    }
    int canvases() {
        int count = 0;
        const word::ShapesPtr shapes = engine->Doc()->Shapes();
        for (int index = 1; index <= shapes->Count(); ++index) {
            count += shapes->Item(index)->Type() == word::wd::msoCanvas ? 1 : 0;
        }
        return count;
    }

    NoOptions options;
    std::unique_ptr<WordBM> engine;
    std::string form;

private:
    std::string savedDebug_;
};

TEST_F(SlipCommand, ConfirmedChoicesBuildTheSlipAndSayEingefuegt) {
    SlipChoices choices;
    choices.ST = false;
    ui.slipAnswers = {choices};

    engine->mfWBM_ESQRgo();

    EXPECT_EQ(ui.slipDialogs, 1);
    EXPECT_EQ(ui.slipDialogDocs, std::vector<std::string>{form});
    EXPECT_EQ(canvases(), 2);
    ASSERT_EQ(ui.boxes.size(), 1U);
    EXPECT_EQ(ui.boxes[0],
              (ScriptedUserInterface::Box{"Eingefügt", msgbox::Information, "Einzahlungsschein QR"}));
    EXPECT_TRUE(engine->Word()->ScreenUpdating());
}

TEST_F(SlipCommand, CancellingTheDialogLeavesTheFormUntouched) {
    ui.slipAnswers = {std::nullopt};

    engine->mfWBM_ESQRgo();

    EXPECT_EQ(canvases(), 0);
    EXPECT_TRUE(engine->Doc()->Saved());
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(SlipCommand, AFailingBuildIsShownInsteadOfEingefuegt) {
    // A canvas cannot stand in a text box: put the cursor into one first.
    SlipChoices keep;
    keep.deleteExisting = false;
    ui.slipAnswers = {SlipChoices{}, keep};
    engine->mfWBM_ESQRgo();
    engine->Doc()
        ->Shapes()
        ->Item("kdx6_ESQRMakeET")
        ->CanvasItems()
        ->Item(3)
        ->TextFrame()
        ->TextRange()
        ->Select();
    ui.boxes.clear();

    engine->mfWBM_ESQRgo();

    ASSERT_EQ(ui.boxes.size(), 1U);
    EXPECT_EQ(ui.boxes[0].buttons, msgbox::Stop);
    EXPECT_NE(ui.boxes[0].text, "Eingefügt");
    EXPECT_TRUE(engine->Word()->ScreenUpdating());
}

} // namespace
} // namespace wordbm::slip::test
