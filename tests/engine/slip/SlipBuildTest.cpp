// Laying the slip into a form: canvases, boxes, headings, placeholders and their formatting.
#include "SlipFixture.h"
#include "engine/SlipLayout.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Font.h"
#include "engine/word/Range.h"
#include "engine/word/Shapes.h"

#include <set>

namespace wordbm::slip::test {
namespace {

using L = SlipLayout;

constexpr const char* ST = "kdx6_ESQRMakeST";
constexpr const char* ET = "kdx6_ESQRMakeET";
constexpr const char* ZT = "kdx6_ESQRMakeZT";

class SlipBuild : public SlipTest {
protected:
    void SetUp() override { open("Empty.docx"); }

    // Font of the first placeholder for `field` in the canvas's item.
    word::FontPtr fontOf(const word::ShapePtr& canvas, int item, const std::string& field) {
        const word::BookmarksPtr marks =
            canvas->CanvasItems()->Item(item)->TextFrame()->TextRange()->Bookmarks();
        for (int index = 1; index <= marks->Count(); ++index) {
            if (fields.BookmarkFieldGet(marks->Item(index)->Name()) == field) {
                return marks->Item(index)->Range()->Font();
            }
        }
        ADD_FAILURE() << field << " not in item " << item;
        return nullptr;
    }

    void expectFont(const word::ShapePtr& canvas, int item, const std::string& field, float size, bool bold) {
        SCOPED_TRACE(field);
        const word::FontPtr font = fontOf(canvas, item, field);
        ASSERT_TRUE(font);
        EXPECT_EQ(font->Name(), "Arial");
        EXPECT_FLOAT_EQ(font->Size(), size);
        EXPECT_EQ(font->Bold(), bold);
    }
};

TEST_F(SlipBuild, ThreeNamedCanvasesStandAtTheFootOfThePage) {
    build();

    EXPECT_EQ(canvasCount(), 3);
    for (const auto& [name, canvasLayout] :
         {std::pair{ST, &L::separation()}, std::pair{ET, &L::receipt()}, std::pair{ZT, &L::paymentPart()}}) {
        SCOPED_TRACE(name);
        const word::ShapePtr shape = canvas(name);
        ASSERT_TRUE(shape);
        EXPECT_EQ(shape->Type(), word::wd::msoCanvas);
        EXPECT_FLOAT_EQ(shape->Left(), L::points(canvasLayout->left));
        EXPECT_FLOAT_EQ(shape->Top(), L::points(canvasLayout->top));
        EXPECT_FLOAT_EQ(shape->Width(), L::points(canvasLayout->width));
        EXPECT_FLOAT_EQ(shape->Height(), L::points(canvasLayout->height));
        EXPECT_EQ(shape->CanvasItems()->Count(), static_cast<int>(canvasLayout->boxes.size()));
    }
    EXPECT_NEAR(canvas(ET)->Top(), 541.417, 1e-3);
    EXPECT_NEAR(canvas(ZT)->Left(), 175.748, 1e-3);
}

TEST_F(SlipBuild, BoxesStandOneMillimetreUpAndLeftOfTheirPlace) {
    build();

    const word::ShapePtr qrBox = canvas(ZT)->CanvasItems()->Item(3);
    EXPECT_EQ(qrBox->Type(), word::wd::msoTextBox);
    EXPECT_NEAR(qrBox->Left(), 4 * 72 / 25.4, 1e-3);
    EXPECT_NEAR(qrBox->Top(), 16 * 72 / 25.4, 1e-3);
    EXPECT_NEAR(qrBox->Width(), 51 * 72 / 25.4, 1e-3);
    EXPECT_NEAR(qrBox->Height(), 51 * 72 / 25.4, 1e-3);
    const word::ShapePtr frame = canvas(ET)->CanvasItems()->Item(1);
    EXPECT_NEAR(frame->Left(), -1 * 72 / 25.4, 1e-3);
    EXPECT_NEAR(frame->Width(), 62 * 72 / 25.4, 1e-3);
    const word::ShapePtr separation = canvas(ST)->CanvasItems()->Item(1);
    EXPECT_NEAR(separation->Top(), -1 * 72 / 25.4, 1e-3);
    EXPECT_NEAR(separation->Height(), 8 * 72 / 25.4, 1e-3);
}

TEST_F(SlipBuild, HeadingsAndBracketedPlaceholdersFillTheBoxesInTheirOrder) {
    build();

    EXPECT_EQ(boxText(canvas(ST), 1), "[Vor der Einzahlung abzutrennen]\v[ESQRAbzutrennen]\r");
    const word::ShapePtr receipt = canvas(ET);
    EXPECT_EQ(boxText(receipt, 1), "\r") << "the frame is empty";
    EXPECT_EQ(boxText(receipt, 2), "[Empfangsschein]\r");
    EXPECT_EQ(
        boxText(receipt, 3),
        "[Konto / Zahlbar an]\v[ESQRKontoAn][Referenz]\v[ESQRReferenz][Zahlbar durch]\v[ESQRKontoVon]\r");
    EXPECT_EQ(boxText(receipt, 4), "[Währung]\v[ESQRWaehrung]\r");
    EXPECT_EQ(boxText(receipt, 5), "[Betrag]\v[ESQRBetrag]\r");
    EXPECT_EQ(boxText(receipt, 6), "[Annahmestelle]\v[ESQRAnnahmestelle]\r");
    const word::ShapePtr payment = canvas(ZT);
    EXPECT_EQ(boxText(payment, 2), "[Zahlteil]\r");
    EXPECT_EQ(boxText(payment, 3), "[QRCode][ESQRQRCode]\r") << "the builder's own wording";
    EXPECT_EQ(boxText(payment, 6),
              "[Konto / Zahlbar an]\v[ESQRKontoAn][Referenz]\v[ESQRReferenz]"
              "[Zusätzliche Informationen]\v[ESQRZusatz][Zahlbar durch]\v[ESQRKontoVon]\r");
    EXPECT_EQ(boxText(payment, 7), "[ESQRInfo]\r");
}

TEST_F(SlipBuild, EveryPlaceholderIsCoveredBetweenItsBracketsByANameFirstBookmark) {
    build();

    const std::multiset<std::string> expected{
        "ESQRAbzutrennenTX", "ESQRAbzutrennen",     "ESQREmpfangsscheinTX",
        "ESQRKontoAnTX",     "ESQRKontoAn",         "ESQRReferenzTX",
        "ESQRReferenz",      "ESQRKontoVonTX",      "ESQRKontoVon",
        "ESQRWaehrungTX",    "ESQRWaehrung",        "ESQRBetragTX",
        "ESQRBetrag",        "ESQRAnnahmestelleTX", "ESQRAnnahmestelle",
        "ESQRZahlteilTX",    "ESQRQRCodeTX",        "ESQRQRCode",
        "ESQRWaehrungTX",    "ESQRWaehrung",        "ESQRBetragTX",
        "ESQRBetrag",        "ESQRKontoAnTX",       "ESQRKontoAn",
        "ESQRReferenzTX",    "ESQRReferenz",        "ESQRZusatzTX",
        "ESQRZusatz",        "ESQRKontoVonTX",      "ESQRKontoVon",
        "ESQRInfo"};
    const auto found = slipFields();
    EXPECT_EQ(std::multiset<std::string>(found.begin(), found.end()), expected);
    const word::BookmarksPtr bookmarks = doc->Bookmarks();
    for (int index = 1; index <= bookmarks->Count(); ++index) {
        const word::BookmarkPtr bookmark = bookmarks->Item(index);
        const std::string field = fields.BookmarkFieldGet(bookmark->Name());
        EXPECT_EQ(bookmark->Name().substr(0, 5 + field.size() + 1), "kdx6_" + field + "_");
        if (!field.ends_with("TX")) {
            EXPECT_EQ(bookmark->Range()->Text(), field);
        }
    }
}

TEST_F(SlipBuild, HeadingsAreBoldInTheirPartsSizeAndValuesRegularInArial) {
    build();

    expectFont(canvas(ET), 2, "ESQREmpfangsscheinTX", 11, true);
    expectFont(canvas(ET), 3, "ESQRKontoAnTX", 6, true);
    expectFont(canvas(ET), 3, "ESQRKontoAn", 8, false);
    expectFont(canvas(ET), 5, "ESQRBetrag", 8, false);
    expectFont(canvas(ZT), 2, "ESQRZahlteilTX", 11, true);
    expectFont(canvas(ZT), 6, "ESQRZusatzTX", 8, true);
    expectFont(canvas(ZT), 6, "ESQRKontoVon", 10, false);
    expectFont(canvas(ZT), 7, "ESQRInfo", 10, false);
}

TEST_F(SlipBuild, CutMarksAndFieldBordersFollowTheirChoices) {
    build();
    EXPECT_TRUE(canvas(ET)->CanvasItems()->Item(1)->Line()->Visible());
    EXPECT_TRUE(canvas(ZT)->CanvasItems()->Item(1)->Line()->Visible());
    EXPECT_FALSE(canvas(ET)->CanvasItems()->Item(3)->Line()->Visible());
    EXPECT_FALSE(canvas(ST)->Line()->Visible());
    EXPECT_FALSE(canvas(ST)->CanvasItems()->Item(1)->Line()->Visible());

    SlipChoices choices;
    choices.ETborder = false;
    choices.STborder = true;
    choices.fieldBorders = true;
    build(choices);
    EXPECT_FALSE(canvas(ET)->CanvasItems()->Item(1)->Line()->Visible());
    EXPECT_TRUE(canvas(ZT)->CanvasItems()->Item(1)->Line()->Visible());
    EXPECT_TRUE(canvas(ET)->CanvasItems()->Item(3)->Line()->Visible());
    EXPECT_TRUE(canvas(ZT)->CanvasItems()->Item(7)->Line()->Visible());
    EXPECT_TRUE(canvas(ST)->Line()->Visible());
}

TEST_F(SlipBuild, OnlyTheChosenPartsAreBuilt) {
    SlipChoices choices;
    choices.ST = false;
    choices.ZT = false;
    build(choices);

    EXPECT_EQ(canvasCount(), 1);
    EXPECT_TRUE(canvas(ET));
}

TEST_F(SlipBuild, BuildingAgainWithoutDeletingLaysASecondSetOnTheFirst) {
    build();
    SlipChoices keep;
    keep.deleteExisting = false;
    build(keep);

    EXPECT_EQ(canvasCount(), 6);
    EXPECT_EQ(shapesNamed(ET).size(), 2U);
    EXPECT_EQ(slipFields().size(), 62U);
    EXPECT_EQ(boxText(shapesNamed(ZT)[1], 5), "[Betrag]\v[ESQRBetrag]\r");

    build();
    EXPECT_EQ(canvasCount(), 3) << "deleting first leaves one set";
}

TEST_F(SlipBuild, DeletingRemovesEveryCanvasOfTheDocumentNotOnlyTheSlips) {
    open("Textboxes in drawing canvas.docx");
    const int shapes = doc->Shapes()->Count();
    ASSERT_GT(shapes, 0) << "a floating text box";
    // Someone's own canvases beside the slip; the form's own one stands in line with the text,
    // where Word's Shapes do not reach either.
    doc->Shapes()->AddCanvas(10, 10, 100, 50)->Name("Logo");
    doc->Shapes()->AddCanvas(10, 100, 100, 50);
    SlipChoices keep;
    keep.deleteExisting = false;
    build(keep);
    EXPECT_EQ(canvasCount(), 5);

    SlipChoices deleteOnly;
    deleteOnly.ST = deleteOnly.ET = deleteOnly.ZT = false;
    build(deleteOnly);
    EXPECT_EQ(canvasCount(), 0);
    EXPECT_EQ(doc->Shapes()->Count(), shapes) << "the text box stays";

    build();
    EXPECT_EQ(canvasCount(), 3);
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
    EXPECT_EQ(boxText(canvas(ZT), 5), "[" + words[3] + "]\v[ESQRBetrag]\r");
    EXPECT_EQ(boxText(canvas(ST), 1), "[" + words[4] + "]\v[ESQRAbzutrennen]\r");
    EXPECT_EQ(boxText(canvas(ZT), 3), "[QRCode][ESQRQRCode]\r") << "no wording but the builder's";
    EXPECT_EQ(boxText(canvas(ET), 3).substr(0, words[5].size() + 2), "[" + words[5] + "]");
}

std::string languageName(const ::testing::TestParamInfo<std::vector<std::string>>& param) {
    return param.param[6];
}

INSTANTIATE_TEST_SUITE_P(
    AllFour, SlipLanguages,
    ::testing::Values(
        std::vector<std::string>{"Deutsch", "Empfangsschein", "Zahlteil", "Betrag",
                                 "Vor der Einzahlung abzutrennen", "Konto / Zahlbar an", "German"},
        std::vector<std::string>{"Französisch", "Récépissé", "Section paiement", "Montant",
                                 "A détacher avant le versement", "Compte / Payable à", "French"},
        std::vector<std::string>{"Italienisch", "Ricevuta", "Sezione pagamento", "Importo",
                                 "Da staccare prima del versamento", "Conto / Pagabile a", "Italian"},
        std::vector<std::string>{"Englisch", "Receipt", "Payment part", "Amount", "Separate before paying in",
                                 "Account / Payable to", "English"}),
    languageName);

} // namespace
} // namespace wordbm::slip::test
