#include "engine/office/FileUrl.h"

#include <filesystem>
#include <gtest/gtest.h>

using wordbm::office::fileUrl;

TEST(FileUrl, KeepsPlainPathsAsTheyAre) {
    EXPECT_EQ(fileUrl("/srv/billing/run-7/invoice_1.docx"), "file:///srv/billing/run-7/invoice_1.docx");
}

TEST(FileUrl, EncodesWhatAUrlCannotCarry) {
    EXPECT_EQ(fileUrl("/tmp/Rechnung Müller #7 (100%).pdf"),
              "file:///tmp/Rechnung%20M%C3%BCller%20%237%20%28100%25%29.pdf");
    EXPECT_EQ(fileUrl("/tmp/a\nb"), "file:///tmp/a%0Ab");
}

TEST(FileUrl, MakesRelativePathsAbsolute) {
    const auto here = std::filesystem::current_path();
    EXPECT_EQ(fileUrl("forms/../invoice.docx"), fileUrl((here / "invoice.docx").string()));
    EXPECT_EQ(fileUrl("invoice.docx").rfind("file:///", 0), 0u);
}
