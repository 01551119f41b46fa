// Filling the slip per invoice: brackets go, values come from the row, headings of empty values go,
// the QR code is pasted, and an empty amount or debtor gets its corner marks in both parts.
#include "SlipFixture.h"
#include "engine/slip/SlipLayout.h"

#include <gmock/gmock.h>

namespace wordbm::slip::test {
namespace {

const std::string ET = "kdx6_ESQRMakeET", ZT = "kdx6_ESQRMakeZT";
const std::string Creditor =
    "CH44 3199 9123 0008 8901 2\vTreuhand Sonnenberg AG\vSeefeldstrasse 112\v8008 Zürich\vCH";
const std::string Debtor = "Muster AG\vDorfstrasse 14\v8802 Kilchberg\vCH";
const std::string Reference = "21 00000 00003 13947 14300 09017";

class SlipFill : public SlipTest {
protected:
    void SetUp() override {
        open("Empty.docx");
        build();
    }

    // The canvas's newest picture stands at the mark's place.
    static void expectMarkAt(const word::ShapePtr& canvas, const std::vector<float>& millimetres) {
        const word::ShapePtr mark = canvas->CanvasItems()->Item(canvas->CanvasItems()->Count());
        ASSERT_EQ(mark->Type(), word::wd::msoPicture);
        std::vector<float> points;
        for (const float length : millimetres) {
            points.push_back(SlipLayout::points(length));
        }
        EXPECT_THAT((std::vector<float>{mark->Left(), mark->Top(), mark->Width(), mark->Height()}),
                    ::testing::Pointwise(::testing::FloatNear(1e-3F), points));
    }
};

TEST_F(SlipFill, ANormalRowWritesEveryValueUnderItsHeadingAndPastesTheCodeInPlaceOfItsHeading) {
    fill(Normal);

    EXPECT_EQ(boxText(canvas("kdx6_ESQRMakeST"), 1), "Vor der Einzahlung abzutrennen\v\r");
    EXPECT_EQ(boxText(canvas(ET), 2), "Empfangsschein\r");
    EXPECT_EQ(boxText(canvas(ET), 3), "Konto / Zahlbar an\v" + Creditor + "\v\vReferenz\v" + Reference +
                                          "\v\vZahlbar durch\v" + Debtor + "\v\r");
    EXPECT_EQ(boxText(canvas(ET), 4), "Währung\vCHF\v\r");
    EXPECT_EQ(boxText(canvas(ET), 5), "Betrag\v1 949.75\v\r");
    EXPECT_EQ(boxText(canvas(ET), 6), "Annahmestelle\v\r");
    EXPECT_EQ(boxText(canvas(ZT), 3), "\x01\r");
    EXPECT_EQ(boxText(canvas(ZT), 6), "Konto / Zahlbar an\v" + Creditor + "\v\vReferenz\v" + Reference +
                                          "\v\vZusätzliche Informationen\vRechnung 24100\v\vZahlbar durch\v" +
                                          Debtor + "\v\r");
    EXPECT_EQ(boxText(canvas(ZT), 7), "\r");
    EXPECT_EQ(picturesIn(canvas(ET)) + picturesIn(canvas(ZT)), 0);
}

TEST_F(SlipFill, ARowWithoutAmountLeavesItEmptyAndMarksItInBothParts) {
    fill(NoAmount);

    EXPECT_EQ(boxText(canvas(ET), 5), "Betrag\v\r");
    EXPECT_EQ(boxText(canvas(ZT), 5), "Betrag\v\r");
    // Each of the two amount placeholders asks for the mark in both parts.
    EXPECT_EQ(picturesIn(canvas(ET)), 2);
    EXPECT_EQ(picturesIn(canvas(ZT)), 2);
    expectMarkAt(canvas(ET), {27, 72, 30, 10});
    expectMarkAt(canvas(ZT), {14, 72, 40, 15});
}

TEST_F(SlipFill, ARowWithoutDebtorMarksThePayableByAreaInBothParts) {
    fill(NoDebtor);

    EXPECT_TRUE(boxText(canvas(ET), 3).ends_with("\v\vZahlbar durch\v\v\r")) << boxText(canvas(ET), 3);
    expectMarkAt(canvas(ET), {7, 41, 50, 20});
    expectMarkAt(canvas(ZT), {58, 41, 65, 25});
}

TEST_F(SlipFill, ARowWithoutReferenzTextLeavesNeitherHeadingNorValueOfTheAdditionalInformation) {
    fill(NoReferenz);

    EXPECT_NE(boxText(canvas(ZT), 6).find(Reference + "\v\v\vZahlbar durch\v" + Debtor), std::string::npos)
        << boxText(canvas(ZT), 6);
}

TEST_F(SlipFill, MarksGoToThePreviousVersionsCanvasesOnlyWhenNoCurrentOneIsThere) {
    SlipChoices receiptOnly;
    receiptOnly.deleteExisting = receiptOnly.ST = receiptOnly.ZT = false;
    build(receiptOnly);
    shapesNamed(ET)[1]->Name("kdx5_ESQRMakeET");
    canvas(ZT)->Name("kdx5_ESQRMakeZT");

    fill(NoAmount);

    EXPECT_EQ(picturesIn(canvas(ET)), 3) << "three amount placeholders";
    EXPECT_EQ(picturesIn(canvas("kdx5_ESQRMakeET")), 0);
    EXPECT_EQ(picturesIn(canvas("kdx5_ESQRMakeZT")), 3);
}

} // namespace
} // namespace wordbm::slip::test
