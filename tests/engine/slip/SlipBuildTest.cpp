// Laying the slip into a form: canvases, boxes, headings, placeholders and their formatting.
#include "SlipFixture.h"
#include "engine/slip/SlipLayout.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Font.h"
#include "engine/word/Range.h"

#include <gmock/gmock.h>

namespace wordbm::slip::test {
namespace {

using L = SlipLayout;
const std::string ST = "kdx6_ESQRMakeST", ET = "kdx6_ESQRMakeET", ZT = "kdx6_ESQRMakeZT";

class SlipBuild : public SlipTest {
protected:
    void SetUp() override { open("Empty.docx"); }

    void expectFont(const std::string& canvasName, int item, const std::string& field, float size,
                    bool bold) {
        const word::BookmarksPtr marks =
            canvas(canvasName)->CanvasItems()->Item(item)->TextFrame()->TextRange()->Bookmarks();
        for (int index = 1; index <= marks->Count(); ++index) {
            if (fields.BookmarkFieldGet(marks->Item(index)->Name()) == field) {
                const word::FontPtr font = marks->Item(index)->Range()->Font();
                EXPECT_EQ(font->Name() + " " + std::to_string(font->Size()) + (font->Bold() ? " bold" : ""),
                          "Arial " + std::to_string(size) + (bold ? " bold" : ""))
                    << field;
                return;
            }
        }
        ADD_FAILURE() << field << " not in item " << item;
    }
};

TEST_F(SlipBuild, ThreeNamedCanvasesAtThePageFootHoldTheirBoxesOneMillimetreUpAndLeft) {
    build();

    EXPECT_EQ(countOf(word::wd::msoCanvas), 3);
    for (const auto& [name, layout] :
         {std::pair{ST, &L::separation()}, std::pair{ET, &L::receipt()}, std::pair{ZT, &L::paymentPart()}}) {
        const word::ShapePtr shape = canvas(name);
        EXPECT_THAT((std::vector<float>{shape->Left(), shape->Top(), shape->Width(), shape->Height()}),
                    ::testing::Pointwise(::testing::FloatNear(1e-3F),
                                         {L::points(layout->left), L::points(layout->top),
                                          L::points(layout->width), L::points(layout->height)}))
            << name;
        EXPECT_EQ(shape->CanvasItems()->Count(), static_cast<int>(layout->boxes.size())) << name;
    }
    EXPECT_NEAR(canvas(ET)->Top(), 541.417, 1e-3);
    const word::ShapePtr qrBox = canvas(ZT)->CanvasItems()->Item(3);
    EXPECT_EQ(qrBox->Type(), word::wd::msoTextBox);
    EXPECT_NEAR(qrBox->Left(), 4 * 72 / 25.4, 1e-3);
    EXPECT_NEAR(qrBox->Top(), 16 * 72 / 25.4, 1e-3);
    EXPECT_NEAR(qrBox->Width(), 51 * 72 / 25.4, 1e-3);
}

TEST_F(SlipBuild, HeadingsAndBracketedPlaceholdersUnderNameFirstBookmarks) {
    build();

    EXPECT_EQ(boxText(canvas(ST), 1), "[Vor der Einzahlung abzutrennen]\v[ESQRAbzutrennen]\r");
    EXPECT_EQ(boxText(canvas(ET), 1), "\r") << "the frame is empty";
    EXPECT_EQ(
        boxText(canvas(ET), 3),
        "[Konto / Zahlbar an]\v[ESQRKontoAn][Referenz]\v[ESQRReferenz][Zahlbar durch]\v[ESQRKontoVon]\r");
    EXPECT_EQ(boxText(canvas(ET), 6), "[Annahmestelle]\v[ESQRAnnahmestelle]\r");
    EXPECT_EQ(boxText(canvas(ZT), 3), "[QRCode][ESQRQRCode]\r") << "the builder's own wording";
    EXPECT_EQ(boxText(canvas(ZT), 6),
              "[Konto / Zahlbar an]\v[ESQRKontoAn][Referenz]\v[ESQRReferenz]"
              "[Zusätzliche Informationen]\v[ESQRZusatz][Zahlbar durch]\v[ESQRKontoVon]\r");
    EXPECT_EQ(boxText(canvas(ZT), 7), "[ESQRInfo]\r");
    EXPECT_EQ(slipFields().size(), 31U);
    for (int index = 1; index <= doc->Bookmarks()->Count(); ++index) {
        const word::BookmarkPtr bookmark = doc->Bookmarks()->Item(index);
        const std::string field = fields.BookmarkFieldGet(bookmark->Name());
        EXPECT_EQ(bookmark->Name().substr(0, field.size() + 6), "kdx6_" + field + "_");
        EXPECT_TRUE(field.ends_with("TX") || bookmark->Range()->Text() == field) << field;
    }
}

TEST_F(SlipBuild, HeadingsAreBoldInTheirPartsSizeAndValuesRegular) {
    build();

    expectFont(ET, 2, "ESQREmpfangsscheinTX", 11, true);
    expectFont(ET, 3, "ESQRKontoAnTX", 6, true);
    expectFont(ET, 3, "ESQRKontoAn", 8, false);
    expectFont(ZT, 6, "ESQRZusatzTX", 8, true);
    expectFont(ZT, 6, "ESQRKontoVon", 10, false);
}

TEST_F(SlipBuild, CutMarksAndFieldBordersFollowTheirChoices) {
    SlipChoices choices;
    choices.ETborder = false;
    choices.STborder = true;
    choices.fieldBorders = true;
    build(choices);
    EXPECT_FALSE(canvas(ET)->CanvasItems()->Item(1)->Line()->Visible());
    EXPECT_TRUE(canvas(ZT)->CanvasItems()->Item(1)->Line()->Visible());
    EXPECT_TRUE(canvas(ET)->CanvasItems()->Item(3)->Line()->Visible());
    EXPECT_TRUE(canvas(ST)->Line()->Visible());

    build();
    EXPECT_TRUE(canvas(ET)->CanvasItems()->Item(1)->Line()->Visible());
    EXPECT_FALSE(canvas(ZT)->CanvasItems()->Item(7)->Line()->Visible());
    EXPECT_FALSE(canvas(ST)->Line()->Visible());
}

TEST_F(SlipBuild, BuildingAgainAddsASecondSetAndDeletingRemovesEveryCanvasButNothingElse) {
    open("Textboxes in drawing canvas.docx");
    const int textBoxes = countOf(word::wd::msoTextBox);
    ASSERT_GT(textBoxes, 0);
    doc->Shapes()->AddCanvas(10, 10, 100, 50)->Name("Logo");
    SlipChoices keep;
    keep.deleteExisting = false;
    keep.ST = false;
    build(keep);
    build(keep);
    EXPECT_EQ(countOf(word::wd::msoCanvas), 5);
    EXPECT_EQ(slipFields().size(), 58U);

    SlipChoices deleteOnly;
    deleteOnly.ST = deleteOnly.ET = deleteOnly.ZT = false;
    build(deleteOnly);
    EXPECT_EQ(countOf(word::wd::msoCanvas), 0);
    EXPECT_EQ(doc->Shapes()->Count(), textBoxes);
}

class SlipLanguages : public SlipTest, public ::testing::WithParamInterface<std::vector<std::string>> {};

TEST_P(SlipLanguages, HeadingsComeInTheChosenLanguage) {
    const auto& words = GetParam();
    open("Empty.docx");
    SlipChoices choices;
    choices.language = words[0];
    build(choices);

    EXPECT_EQ(boxText(canvas(ET), 2), "[" + words[1] + "]\r");
    EXPECT_EQ(boxText(canvas(ZT), 2), "[" + words[2] + "]\r");
    EXPECT_EQ(boxText(canvas(ST), 1), "[" + words[3] + "]\v[ESQRAbzutrennen]\r");
}

INSTANTIATE_TEST_SUITE_P(
    AllFour, SlipLanguages,
    ::testing::Values(
        std::vector<std::string>{"Deutsch", "Empfangsschein", "Zahlteil", "Vor der Einzahlung abzutrennen"},
        std::vector<std::string>{"Französisch", "Récépissé", "Section paiement",
                                 "A détacher avant le versement"},
        std::vector<std::string>{"Italienisch", "Ricevuta", "Sezione pagamento",
                                 "Da staccare prima del versamento"},
        std::vector<std::string>{"Englisch", "Receipt", "Payment part", "Separate before paying in"}));

} // namespace
} // namespace wordbm::slip::test
