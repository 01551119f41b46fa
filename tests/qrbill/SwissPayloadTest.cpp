#include "qrbill/SwissPayload.h"

#include "qrbill/QRBillValidator.h"

#include <gtest/gtest.h>

namespace wordbm {
namespace {

// As our program writes it: LF between elements, CR LF between the fields of an address group,
// and the closing CR LF of the creditor group that makes the seventh empty ultimate-creditor field.
const std::string OwnPayload = "SPC\n0200\n1\nCH4431999123000889012\nS\n"
                               "Robert Schneider AG\r\nRue du Lac\r\n1268\r\n2501\r\nBiel\r\nCH\r\n\n"
                               "\r\n\r\n\r\n\r\n\r\n\n1949.75\nCHF\nS\n"
                               "Pia Rutschmann\r\nMarktgasse\r\n28\r\n9400\r\nRorschach\r\nCH\n"
                               "QRR\n210000000003139471430009017\nRechnung 3139\nEPD";

// 31 elements with a combined debtor address.
const std::string Base =
    "SPC\n0200\n1\nCH5800791123000889012\nS\nRobert Schneider AG\nRue du Lac\n1268\n2501\n"
    "Biel\nCH\n\n\n\n\n\n\n\n3949.75\nCHF\nK\nPia Rutschmann\nMarktgasse 28\n9400 Rorschach\n\n\n"
    "CH\nNON\n\nBill no. 3139\nEPD";

TEST(SwissPayloadOwnLayout, AddressGroupsJoinedByCrLfLandInTheirElements) {
    const auto p = SwissPayload::parse(OwnPayload);
    ASSERT_TRUE(p);
    EXPECT_EQ(p->creditor.name, "Robert Schneider AG");
    EXPECT_EQ(p->creditor.country, "CH");
    EXPECT_TRUE(p->ultimateCreditor.empty());
    EXPECT_EQ(p->amount, "1949.75");
    EXPECT_EQ(p->ultimateDebtor.town, "Rorschach");
    EXPECT_EQ(p->referenceType, "QRR");
    EXPECT_EQ(p->trailer, "EPD");
    EXPECT_TRUE(p->mixedSeparators);
    EXPECT_FALSE(p->trailingSeparator);
    EXPECT_EQ(QRBillValidator::validate(OwnPayload), std::vector<std::string>{});
}

class SwissPayloadSeparator : public testing::TestWithParam<const char*> {};

TEST_P(SwissPayloadSeparator, EverySeparatorGivesTheSameElements) {
    std::string text;
    for (char c : Base)
        text += c == '\n' ? std::string(GetParam()) : std::string(1, c);
    const auto p = SwissPayload::parse(text);
    ASSERT_TRUE(p);
    EXPECT_EQ(*p, *SwissPayload::parse(Base));
    EXPECT_EQ(p->ultimateDebtor.houseNumberOrLine2, "9400 Rorschach");
}

INSTANTIATE_TEST_SUITE_P(CrLfAndCr, SwissPayloadSeparator, testing::Values("\r\n", "\r"));

TEST(SwissPayloadTail, OptionalElementsAfterTheTrailer) {
    const auto p = SwissPayload::parse(Base + "\n//S1/10/3139\nAV1;x\nAV2;y");
    ASSERT_TRUE(p);
    EXPECT_EQ(p->billingInformation, "//S1/10/3139");
    EXPECT_EQ(p->alternativeProcedures, (std::vector<std::string>{"AV1;x", "AV2;y"}));
    EXPECT_FALSE(SwissPayload::parse(Base)->billingInformation);
}

TEST(SwissPayloadTail, OneTrailingBreakIsKeptAsAFlagNotAnElement) {
    const auto p = SwissPayload::parse(Base + "\r\n");
    ASSERT_TRUE(p);
    EXPECT_TRUE(p->trailingSeparator);
    EXPECT_FALSE(p->billingInformation);
    EXPECT_EQ(SwissPayload::parse(Base + "\n\n")->billingInformation, "");
}

TEST(SwissPayloadStructure, RefusesWhatItCannotReadWithTheReason) {
    const std::pair<std::string, std::string> cases[] = {{"", "QR-Typ"},
                                                         {"garbage", "QR-Typ"},
                                                         {Base.substr(0, Base.rfind('\n')), "gefunden 30"},
                                                         {Base + "\nx\na\nb\nc", "gefunden 35"},
                                                         {Base + "\n\n\n\n\n", "gefunden 35"},
                                                         {"SPC\n0100" + Base.substr(8), "Version"},
                                                         {"SPC\n0200\n2" + Base.substr(10), "Codierung"}};
    for (const auto& [text, reason] : cases) {
        std::vector<std::string> problems;
        EXPECT_FALSE(SwissPayload::parse(text, &problems)) << reason;
        EXPECT_NE(testing::PrintToString(problems).find(reason), std::string::npos) << reason;
    }
}

} // namespace
} // namespace wordbm
