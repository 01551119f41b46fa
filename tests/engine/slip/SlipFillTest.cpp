// Filling the slip per invoice: brackets go, values come from the row, headings of empty values go,
// the QR code is pasted, and empty amount or debtor fields get their corner marks.
#include "SlipFixture.h"
#include "engine/SlipLayout.h"
#include "engine/word/Shapes.h"

namespace wordbm::slip::test {
namespace {

using L = SlipLayout;

constexpr const char* ET = "kdx6_ESQRMakeET";
constexpr const char* ZT = "kdx6_ESQRMakeZT";
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

    // Every box of every canvas after the fill; no bracket may be left anywhere.
    void expectNoBrackets() {
        for (const char* name : {"kdx6_ESQRMakeST", ET, ZT}) {
            for (const word::ShapePtr& shape : shapesNamed(name)) {
                for (int item = 1; item <= shape->CanvasItems()->Count(); ++item) {
                    if (shape->CanvasItems()->Item(item)->Type() == word::wd::msoTextBox) {
                        const std::string text = boxText(shape, item);
                        EXPECT_EQ(text.find_first_of("[]"), std::string::npos) << text;
                    }
                }
            }
        }
    }

    void expectMarkAt(const word::ShapePtr& canvas, float left, float top, float width, float height) {
        const word::CanvasShapesPtr items = canvas->CanvasItems();
        const word::ShapePtr mark = items->Item(items->Count());
        ASSERT_EQ(mark->Type(), word::wd::msoPicture);
        EXPECT_FLOAT_EQ(mark->Left(), L::points(left));
        EXPECT_FLOAT_EQ(mark->Top(), L::points(top));
        EXPECT_FLOAT_EQ(mark->Width(), L::points(width));
        EXPECT_FLOAT_EQ(mark->Height(), L::points(height));
    }
};

TEST_F(SlipFill, ANormalRowWritesEveryValueUnderItsHeadingAndPastesTheQRCode) {
    fill(Normal);

    expectNoBrackets();
    EXPECT_EQ(boxText(canvas("kdx6_ESQRMakeST"), 1), "Vor der Einzahlung abzutrennen\v\r");
    const word::ShapePtr receipt = canvas(ET);
    EXPECT_EQ(boxText(receipt, 2), "Empfangsschein\r");
    EXPECT_EQ(boxText(receipt, 3), "Konto / Zahlbar an\v" + Creditor + "\v\vReferenz\v" + Reference +
                                       "\v\vZahlbar durch\v" + Debtor + "\v\r");
    EXPECT_EQ(boxText(receipt, 4), "Währung\vCHF\v\r");
    EXPECT_EQ(boxText(receipt, 5), "Betrag\v1 949.75\v\r");
    EXPECT_EQ(boxText(receipt, 6), "Annahmestelle\v\r");
    const word::ShapePtr payment = canvas(ZT);
    EXPECT_EQ(boxText(payment, 3), "\x01\r") << "the heading goes, the code stands alone";
    EXPECT_EQ(boxText(payment, 6), "Konto / Zahlbar an\v" + Creditor + "\v\vReferenz\v" + Reference +
                                       "\v\vZusätzliche Informationen\vRechnung 24100\v\vZahlbar durch\v" +
                                       Debtor + "\v\r");
    EXPECT_EQ(boxText(payment, 7), "\r") << "no further information";
    EXPECT_EQ(picturesIn(receipt), 0);
    EXPECT_EQ(picturesIn(payment), 0);
    EXPECT_EQ(qrImage.sizeMm(), 46.0);
}

TEST_F(SlipFill, ARowWithoutAmountLeavesTheAmountEmptyAndMarksItInBothParts) {
    fill(NoAmount);

    expectNoBrackets();
    EXPECT_EQ(boxText(canvas(ET), 5), "Betrag\v\r");
    EXPECT_EQ(boxText(canvas(ZT), 5), "Betrag\v\r");
    // One request per amount placeholder, and the slip has one in each part.
    EXPECT_EQ(picturesIn(canvas(ET)), 2);
    EXPECT_EQ(picturesIn(canvas(ZT)), 2);
    expectMarkAt(canvas(ET), 27, 72, 30, 10);
    expectMarkAt(canvas(ZT), 14, 72, 40, 15);
}

TEST_F(SlipFill, ARowWithoutDebtorMarksThePayableByAreaInBothParts) {
    fill(NoDebtor);

    EXPECT_NE(boxText(canvas(ET), 3).find("\v\vZahlbar durch\v\v\r"), std::string::npos)
        << boxText(canvas(ET), 3);
    EXPECT_EQ(picturesIn(canvas(ET)), 2);
    EXPECT_EQ(picturesIn(canvas(ZT)), 2);
    expectMarkAt(canvas(ET), 7, 41, 50, 20);
    expectMarkAt(canvas(ZT), 58, 41, 65, 25);
}

TEST_F(SlipFill, ARowWithoutReferenzTextLeavesNeitherHeadingNorValueOfTheAdditionalInformation) {
    fill(NoReferenz);

    const std::string details = boxText(canvas(ZT), 6);
    EXPECT_EQ(details.find("Zusätzliche"), std::string::npos) << details;
    EXPECT_NE(details.find(Reference + "\v\v\vZahlbar durch\v" + Debtor), std::string::npos) << details;
    EXPECT_EQ(picturesIn(canvas(ZT)), 0);
}

TEST_F(SlipFill, MarksGoIntoEveryCanvasOfTheirPartWhenTheSlipWasBuiltTwice) {
    SlipChoices keep;
    keep.deleteExisting = false;
    build(keep);

    fill(NoAmount);

    // Four amount placeholders, each marking both receipts and both payment parts.
    for (const char* name : {ET, ZT}) {
        for (const word::ShapePtr& shape : shapesNamed(name)) {
            EXPECT_EQ(picturesIn(shape), 4) << name;
        }
    }
}

TEST_F(SlipFill, CanvasesOfThePreviousVersionGetTheMarksWhenNoCurrentOneIsThere) {
    canvas(ET)->Name("kdx5_ESQRMakeET");
    canvas(ZT)->Name("kdx5_ESQRMakeZT");

    fill(NoDebtor);

    EXPECT_EQ(picturesIn(canvas("kdx5_ESQRMakeET")), 2);
    EXPECT_EQ(picturesIn(canvas("kdx5_ESQRMakeZT")), 2);
}

TEST_F(SlipFill, AnOldCanvasBesideACurrentOneIsLeftWithoutMarks) {
    SlipChoices receiptOnly;
    receiptOnly.deleteExisting = receiptOnly.ST = receiptOnly.ZT = false;
    build(receiptOnly);
    shapesNamed(ET)[1]->Name("kdx5_ESQRMakeET");

    fill(NoAmount);

    EXPECT_EQ(picturesIn(canvas(ET)), 3) << "three amount placeholders in the document";
    EXPECT_EQ(picturesIn(canvas("kdx5_ESQRMakeET")), 0);
}

TEST_F(SlipFill, AMissingPartGetsNoMarkAndNoError) {
    open("Empty.docx");
    SlipChoices paymentOnly;
    paymentOnly.ST = paymentOnly.ET = false;
    build(paymentOnly);

    EXPECT_NO_THROW(fill(NoAmount));
    EXPECT_EQ(picturesIn(canvas(ZT)), 1);
}

} // namespace
} // namespace wordbm::slip::test
