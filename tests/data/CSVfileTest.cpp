#include "data/CSVfile.h"

#include "kit/FileBytes.h"
#include "kit/TempDir.h"
#include "support/Errors.h"

#include <gtest/gtest.h>
#include <random>

using namespace wordbm;
using namespace std::string_literals;

namespace {

// Writes the bytes as they stand (cp1252, CR LF) into a file of this test process's folder.
std::string controlFile(const std::string& name, const std::string& bytes) {
    static const TempDir folder;
    const std::string path = folder / name;
    writeBytes(path, bytes);
    return path;
}

CSVfile readControl(const std::string& bytes) {
    CSVfile csv;
    csv.ReadFile(controlFile("control.csv", bytes), ";", "\"", true);
    return csv;
}

const Variant null = Variant::null();
const Variant none = Variant(std::string());

} // namespace

TEST(CSVfile, ReadsHeaderAndValuesOfAControlFile) {
    CSVfile csv = readControl(" \"KliName\" ;RgNummer;KliTot;GeschTxt\r\n"
                              "M\xFC"
                              "ller;\"00042\";1'234.55;\"Say \"\"Hi\"\"\"\r\n"
                              "\"17\";");
    EXPECT_EQ(csv.LineCount(), 2);
    EXPECT_EQ(csv.FieldNameCount(), 4);
    EXPECT_EQ(csv.FieldNameIndex("KliName"), 0); // blanks around a quoted name are dropped
    EXPECT_EQ(csv.FieldNameIndex(Variant(std::int16_t{2})), 1);
    EXPECT_EQ(csv.FieldNameIndex(Variant(2.0)), -1);
    EXPECT_EQ(csv.FieldNameIndex("kliname"), -1);
    EXPECT_EQ(csv.FieldName(4), Variant("GeschTxt"));
    EXPECT_EQ(csv.FieldName(5), none);
    EXPECT_EQ(csv.Field("KliName", 1), Variant("Müller"));
    EXPECT_EQ(csv.Field(2, 1), Variant("00042"));
    EXPECT_EQ(csv.FieldStr("GeschTxt", 1), "Say \"Hi\"");
    EXPECT_EQ(csv.Line(1), "M\xC3\xBCller;\"00042\";1'234.55;\"Say \"\"Hi\"\"\"");
    // A quoted number and one separator: the number, then null, and null past the line's end.
    EXPECT_EQ(csv.Field(1, 2), Variant("17"));
    EXPECT_EQ(csv.Field(2, 2), null);
    EXPECT_EQ(csv.Field(4, 2), null);
    // Unknown field or line: the empty string, not null.
    EXPECT_EQ(csv.Field("Nope", 1), none);
    EXPECT_EQ(csv.Field(1, 0), none);
    EXPECT_EQ(csv.Field(1, 3), none);
    EXPECT_EQ(csv.Line(3), "");
    EXPECT_EQ(csv.FieldCheck("KliName;\"KliTot\";KliName; ;Nope"), 3);
}

TEST(CSVfile, KeepsItsDeliberateLimits) {
    // The final CR LF adds a blank data line whose every field is "", not null.
    CSVfile csv = readControl("A;;B\r\n\"x;y\";2;3\r\n");
    EXPECT_EQ(csv.LineCount(), 2);
    EXPECT_EQ(csv.Field(1, 2), none);
    // An empty header name lowers the count wherever it stands; B falls out of the range.
    EXPECT_EQ(csv.FieldNameCount(), 2);
    EXPECT_EQ(csv.FieldNameIndex("A"), 0);
    EXPECT_EQ(csv.FieldNameIndex("B"), -1);
    // Quotes do not protect the separator; each half loses one quote.
    EXPECT_EQ(csv.Field(1, 1), Variant("x"));
    EXPECT_EQ(csv.Field(2, 1), Variant("y"));

    EXPECT_EQ(readControl("A;B\nx;y\n").LineCount(), 0); // LF alone ends no line
    EXPECT_EQ(readControl("").LineCount(), -1);
    csv.ReadFile("/nonexistent/folder/control.csv");
    EXPECT_EQ(csv.LineCount(), -1);
    csv.ReadFile(controlFile("empty.csv", ""), ";", "\"", false);
    EXPECT_EQ(csv.LineCount(), 0);

    // Skipped columns: numbers shift, but the name search still starts at column 0.
    csv.ReadFile(controlFile("skip.csv", "X;A;B\r\n1;2;3\r\n"), ";", "\"", true, 1);
    EXPECT_EQ(csv.FieldNameCount(), 2);
    EXPECT_EQ(csv.FieldNameIndex(1), 1);
    EXPECT_EQ(csv.FieldNameIndex("X"), 0);
    EXPECT_EQ(csv.FieldNameIndex("B"), -1);
    EXPECT_EQ(csv.FieldName("A"), Variant("B"));
    EXPECT_EQ(csv.Field("A", 1), Variant("2"));
}

TEST(CSVfile, KeepsTheFieldCacheAcrossFiles) {
    CSVfile csv;
    csv.ReadFile(controlFile("first.csv", "A;B\r\nold1;old2\r\n"));
    EXPECT_EQ(csv.Field("B", 1), Variant("old2"));
    // Without a header, data line 1 is physical line 0, the index ReadFile leaves cached:
    // the first read answers from the previous file's line without splitting the new one.
    csv.ReadFile(controlFile("second.csv", "new1;new2\r\nnext1;next2"), ";", "\"", false);
    EXPECT_EQ(csv.WithFieldNames(), false);
    EXPECT_EQ(csv.FieldNameCount(), 2); // the names stay from the first file
    EXPECT_EQ(csv.Field(2, 1), Variant("old2"));
    EXPECT_EQ(csv.Field(1, 2), Variant("next1"));
    EXPECT_EQ(csv.Field(1, 1), Variant("new1"));
}

TEST(CSVfile, TakesReadArgumentsAsVariants) {
    CSVfile csv;
    const auto path = controlFile("args.csv", "skip me\r\nA,B\r\n1,2\r\n3,4");
    csv.ReadFile(path, ",", "'", "True", "0", 1.0);
    EXPECT_EQ(csv.Separator(), ",");
    EXPECT_EQ(csv.Delimiter(), "'");
    EXPECT_EQ(csv.LineCount(), 2);
    EXPECT_EQ(csv.FieldLong("B", 2), 4);
    csv.ReadFile(path, Variant::null());
    EXPECT_EQ(csv.Separator(), "");
    EXPECT_EQ(csv.Delimiter(), "\"");
    EXPECT_EQ(csv.FieldNameIndex("skip me"), 0); // an empty separator leaves the whole line
}

TEST(CSVfile, ConvertsValuesWithSwissSettings) {
    CSVfile csv =
        readControl("N;D;T\r\n2.5;5.1.2026;24.12.2026 18:00\r\n40000;x;\r\n1;0;True\r\n-3.5;;12:30\r\n");
    EXPECT_EQ(csv.FieldLong("N", 1), 2);
    EXPECT_EQ(csv.FieldLong("N", 4), -4);
    EXPECT_EQ(csv.FieldLong("D", 2), 0);
    EXPECT_EQ(csv.FieldInt("N", 1), 2);
    EXPECT_THROW(csv.FieldInt("N", 2), OverflowError);
    EXPECT_EQ(csv.FieldLong("N", 2), 40000);
    EXPECT_EQ(csv.FieldCur("N", 4), Currency{-35000});
    EXPECT_EQ(csv.FieldCur("D", 2), Currency{});
    EXPECT_TRUE(csv.FieldBool("N", 3));
    EXPECT_FALSE(csv.FieldBool("D", 3));
    EXPECT_FALSE(csv.FieldBool("T", 3)); // the words for true are no number
    EXPECT_FALSE(csv.FieldBool("Nope", 3));
    EXPECT_EQ(csv.FieldDate("D", 1), Date{46027});
    EXPECT_EQ(csv.FieldDateTime("T", 1), Date{46380.75});
    EXPECT_EQ(csv.FieldDate("T", 1), Date{46380});
    EXPECT_EQ(csv.FieldTime("T", 1), Date{0.75});
    EXPECT_NEAR(csv.FieldTime("T", 4).serial, 12.5 / 24, 1e-9);
    EXPECT_EQ(csv.FieldDateTime("D", 2), Date{});
    EXPECT_EQ(csv.FieldDate("T", 2), Date{});
    EXPECT_EQ(csv.FieldStr("T", 2), "");
}

// Large files are held in compressed blocks of whole lines and read in chunks: every line must come
// back whole wherever the chunks and blocks are cut, a line end split between two chunks included,
// and copies (the threads of a merge) must read on their own.
TEST(CSVfile, ReadsEveryLineOfALargeFileAcrossItsBlocks) {
    std::string bytes = "Nr;Name;Text\r\n";
    // Data line 1 ends across the first chunk boundary: CR last in the chunk, LF first in the next.
    bytes += "1;" + std::string(65536 - 1 - bytes.size() - 4, 'x') + ";7\r\n";
    ASSERT_EQ(bytes[65535], '\r');
    std::mt19937 random(20261126);
    std::vector<std::string> names{""};
    for (int line = 2; line <= 3000; ++line) {
        names.push_back(std::string(1 + random() % 400, static_cast<char>('a' + line % 26)));
        bytes +=
            std::to_string(line) + ";M\xFCller " + names.back() + ";\"" + std::to_string(line * 7) + "\"\r\n";
    }
    bytes += std::string(70'000, ';') + "last";
    CSVfile csv = readControl(bytes);
    ASSERT_EQ(csv.LineCount(), 3001);
    CSVfile copy = csv;
    for (std::int32_t line = 3000; line >= 1; --line) {
        const std::int32_t other = 3001 - line; // the copy reads the other way round
        ASSERT_EQ(csv.FieldLong("Text", line), line * 7) << line;
        ASSERT_EQ(copy.FieldLong("Nr", other), other);
        if (line > 1) {
            ASSERT_EQ(csv.FieldStr("Name", line), "M\xC3\xBCller " + names[line - 1]) << line;
        }
    }
    EXPECT_EQ(csv.Field(3, 3001), null);
    EXPECT_EQ(csv.Line(3001), std::string(70'000, ';') + "last");
}

TEST(CSVfile, SurvivesHostileFiles) {
    CSVfile csv = readControl("A\0B;C\r\nx\0y;\0\r\n"s);
    EXPECT_EQ(csv.FieldNameIndex("A\0B"s), 0);
    EXPECT_EQ(csv.Field(1, 1), Variant("x\0y"s));
    EXPECT_EQ(readControl("A;B\r\n").Field(1, 1), none); // header and a blank line
    EXPECT_EQ(readControl("A;B").LineCount(), 0);

    // Millions of separators on one line cost no more than what is read of it.
    csv = readControl("A;B\r\n" + std::string(4'000'000, ';') + "x");
    EXPECT_EQ(csv.Field("B", 1), null);
    EXPECT_EQ(readControl(std::string(3'000'000, ';')).FieldNameCount(), 0);
    std::string manyNames;
    for (int i = 0; i <= (1 << 20); ++i) {
        manyNames += "a;";
    }
    EXPECT_EQ(readControl(manyNames).FieldNameCount(), 0); // no control file has a million columns

    // Random bytes under every kind of reading, odd counts to skip included: neutral values only.
    const char* const separators[] = {";", "", ";;", "\r", "\""};
    std::mt19937 random(20261124);
    for (int round = 0; round < 30; ++round) {
        std::string bytes(4096, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(random() % 256 < 16 ? ";\r\n\" "[random() % 5] : random() % 256);
        }
        csv.ReadFile(controlFile("random.csv", bytes), separators[round % 5], "\"", round % 2 == 0,
                     round % 4 - 1, round % 3 - 1);
        for (int line = -1; line <= csv.LineCount() + 1; ++line) {
            for (int field = -1; field <= csv.FieldNameCount() + 1; ++field) {
                csv.FieldStr(field, line);
                csv.FieldDate(field, line);
                EXPECT_NO_THROW(csv.FieldCur(field, line));
            }
        }
    }
}
