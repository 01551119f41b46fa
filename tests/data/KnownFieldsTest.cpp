#include "data/KnownFields.h"

#include "data/ExportFieldCatalogue.h"

#include <gtest/gtest.h>
#include <set>

using namespace wordbm;

namespace {
// clang-format off
const std::vector<std::string> qrGroups{"-", "QRText", "QRCode",
                                        "-", "Receiver", "ReceiverFinal", "ReceiverBlock", "Sender",
                                        "-", "Currency", "Amount"};
// clang-format on
std::vector<std::string> withQr(std::vector<std::string> names) {
    names.insert(names.end(), qrGroups.begin(), qrGroups.end());
    return names;
}
} // namespace

TEST(KnownFields, BuildsTheChooserListFromTheListText) {
    KnownFields fields;
    fields.FieldsBESR();
    EXPECT_EQ(fields.Fields(), ExportFieldCatalogue::FieldListText());
    ASSERT_EQ(fields.Items().size(), 66u);
    EXPECT_EQ(std::vector<std::string>(fields.Items().begin() + 54, fields.Items().end()), withQr({"RgDue"}));
    fields.Fields("");
    EXPECT_EQ(fields.Items(), qrGroups);
    EXPECT_EQ(fields.SeparatorCount(), 3); // counted anew, not added up
    fields.Fields("BueroAdr1; ;KliName;;");
    EXPECT_EQ(fields.Items(), withQr({"BueroAdr1", "KliName"}));
    EXPECT_EQ(fields.Fields(), "BueroAdr1; ;KliName;;");
    // A name whose key is taken is refused, so the QR "Amount" gives way to the list's "amount".
    fields.Fields(" \"Kli Name\" ;\"Say \"\"Hi\"\"\";KliName;KLINAME;amount");
    std::vector<std::string> expected = withQr({"Kli Name", "Say \"Hi\"", "KliName", "amount"});
    expected.pop_back();
    EXPECT_EQ(fields.Items(), expected);
}

TEST(KnownFields, LooksUpIgnoringCaseAndGivesTheStoredSpelling) {
    KnownFields fields;
    EXPECT_EQ(fields.FieldKnown("KliName"), "");
    fields.FieldsBESR();
    EXPECT_EQ(fields.FieldKnown("kliname"), "KliName");
    EXPECT_EQ(fields.FieldKnown("AMOUNT"), "Amount");
    for (const char* unknown : {"-", "", " KliName", "Foo", "ESQRMakeST"}) {
        EXPECT_EQ(fields.FieldKnown(unknown), "") << unknown;
    }
}

TEST(KnownFields, ReadsOnlyTheEngineBookmarkLayouts) {
    KnownFields fields;
    fields.FieldsBESR();
    // clang-format off
    const std::vector<std::pair<std::string, std::string>> nameFirst{
        {"kdx6_kliname_123456", "KliName"}, {"kdx5_KliName_000001", "KliName"}, {"kdx6_A_12345", ""},
        {"kdx6_Amount_123456", "Amount"}, {"kdx6_ESQRMakeST_123456", "ESQRMakeST"},
        {"kdx6_ KliName _123456", "KliName"}, {"kdx6_KliName_-12.50", "KliName"}, {"kdx6_KliName_00001", ""},
        {"Kdx6_KliName_000001", ""},
        {"kdx6_Foo_123456", ""}, {"kdx6_-_123456", ""}, {"kdx6_esqrMakeST_123456", ""},
        {"kdx6_KliName-123456", ""}, {"kdx6_123456_KliName", ""}, {"", ""}};
    // clang-format on
    for (const auto& [bookmark, field] : nameFirst) {
        EXPECT_EQ(fields.BookmarkFieldGet(bookmark), field) << bookmark;
    }
    // clang-format off
    const std::vector<std::pair<std::string, std::string>> numberFirst{
        {"kdx6_123456_KliName", "KliName"}, {"kdx5_000001_rgdue", "RgDue"}, {"kdx6_KliName_123456", ""},
        {"kdx6_123456_ESQRAmount", "ESQRAmount"}, {"kdx6_12345_KliName", ""}, {"kdx6_123456-KliName", ""}};
    // clang-format on
    for (const auto& [bookmark, field] : numberFirst) {
        EXPECT_EQ(fields.BookmarkFieldGet(bookmark, true), field) << bookmark;
    }
}

TEST(KnownFields, MadeNamesReadBackToTheirField) {
    KnownFields fields;
    fields.FieldsBESR();
    std::vector<std::string> names = fields.Items();
    names.push_back("ESQRMakeST");
    std::set<std::string> suffixes;
    for (const std::string& name : names) {
        const std::string made = KnownFields::BookmarkNameMake(name),
                          older = KnownFields::BookmarkNameMake(name, true);
        EXPECT_TRUE(made.starts_with("kdx6_" + name + "_") && made.size() == name.size() + 12) << made;
        EXPECT_EQ(made.substr(made.size() - 6).find_first_not_of("0123456789"), std::string::npos) << made;
        EXPECT_EQ(fields.BookmarkFieldGet(made), name == "-" ? "" : name);
        EXPECT_EQ(fields.BookmarkFieldGet(older, true), name == "-" ? "" : name);
        suffixes.insert(made.substr(made.size() - 6));
    }
    EXPECT_GT(suffixes.size(), 1u);
    EXPECT_TRUE(KnownFields::BookmarkNameMake(" KliName ", true).ends_with("_KliName"));
    EXPECT_EQ(KnownFields::suffixDigits(0.048213), "048213");
    EXPECT_EQ(KnownFields::suffixDigits(0.0000014), "000001");
    EXPECT_EQ(KnownFields::suffixDigits(0.9999994), "999999");
    EXPECT_EQ(KnownFields::suffixDigits(0.9999999), "000000"); // rounds up to 1000000

    // A name the document already has is drawn again, so no existing bookmark is moved away.
    std::set<std::string> taken;
    const std::string fresh = KnownFields::UnusedBookmarkName(
        "KliName", [&](const std::string& made) { return taken.size() < 3 && taken.insert(made).second; });
    EXPECT_EQ(taken.size(), 3u);
    EXPECT_FALSE(taken.contains(fresh));
    EXPECT_EQ(fields.BookmarkFieldGet(fresh), "KliName");
}
