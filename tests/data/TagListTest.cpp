#include "data/TagList.h"

#include "support/Errors.h"

#include <gtest/gtest.h>

using namespace wordbm;

TEST(TagList, ParsesAndWritesTheTextForm) {
    TagList tags;
    tags.List("");
    EXPECT_EQ(tags.Count(), 0);
    EXPECT_EQ(tags.List(), "");
    tags.List(" a =1;;b;x=a=b");
    ASSERT_EQ(tags.Count(), 4);
    EXPECT_EQ(tags.Item(1), "a");
    EXPECT_EQ(tags.Item(2), "");
    EXPECT_EQ(tags.Value("a"), Variant("1"));
    EXPECT_EQ(tags.Value(""), Variant(true));
    EXPECT_EQ(tags.Value("X"), Variant("a=b"));
    EXPECT_EQ(tags.List(), "a=1;=True;b=True;x=a=b");
    tags.TrailingSeparator = true;
    tags.ListSeparator = "|";
    tags.ValueSeparator = ":";
    tags.List("p:1|q");
    EXPECT_EQ(tags.List(), "p:1|q:True|");
}

TEST(TagList, MatchesNamesIgnoringCaseAndMovesChangedTags) {
    TagList tags;
    tags.List("pdf");
    EXPECT_TRUE(tags.Tag("PDF"));
    EXPECT_EQ(tags.Item(1), "pdf");
    tags.Add(" Über ");
    EXPECT_TRUE(tags.Tag("üBER"));
    EXPECT_EQ(tags.Value("über"), Variant());
    EXPECT_EQ(tags.ValueString("über"), "");
    EXPECT_EQ(tags.Value("absent"), Variant::null());
    tags.List("A=1;B=2");
    tags.Value("a", "3");
    EXPECT_EQ(tags.List(), "B=2;a=3");
    tags.Value("B", "");
    EXPECT_EQ(tags.List(), "a=3;B=");
    tags.Tag("a", false);
    EXPECT_FALSE(tags.Tag("A"));
    EXPECT_EQ(tags.Count(), 1);
}

TEST(TagList, KeepsTagsAndValuesInSeparateCollections) {
    TagList tags;
    tags.Add("A");
    EXPECT_EQ(tags.List(), "A");
    tags.List("A=1");
    tags.Remove("A");
    tags.Add("A");
    EXPECT_EQ(tags.Value("A"), Variant("1"));
    tags.List("A=1;B=2");
    tags.Add("C");
    tags.Remove("A");
    EXPECT_EQ(tags.Item(1), "B");
    EXPECT_EQ(tags.ItemValue(1), Variant("1")); // the values keep their own order
    EXPECT_EQ(tags.ItemValue(2), Variant("2"));
    EXPECT_THROW(tags.ItemValue(3), InvalidArgumentError);
    EXPECT_THROW(tags.Item(0), InvalidArgumentError);
    EXPECT_THROW(tags.Item(3), InvalidArgumentError);
    tags.Clear();
    tags.Add("A");
    EXPECT_EQ(tags.Value("A"), Variant());
}

TEST(TagList, ReadsValuesAsNumbers) {
    TagList tags;
    tags.List("n=12;x=x1;h=2.5;big=3000000000;flag");
    EXPECT_EQ(tags.ValueLong("n"), 12);
    EXPECT_EQ(tags.ValueLong("x"), 0);
    EXPECT_EQ(tags.ValueLong("absent"), 0);
    EXPECT_EQ(tags.ValueLong("h"), 2);
    EXPECT_EQ(tags.ValueLong("flag"), -1);
    EXPECT_THROW(tags.ValueLong("big"), OverflowError);
    tags.Add("empty");
    EXPECT_EQ(tags.ValueLong("empty"), 0);
}
