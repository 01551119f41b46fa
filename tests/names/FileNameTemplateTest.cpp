#include "names/FileNameTemplate.h"

#include "data/CSVfile.h"
#include "kit/EnvGuard.h"
#include "kit/MemoryMaskStore.h"
#include "kit/TempDir.h"
#include "support/Cp1252.h"
#include "support/Errors.h"
#include "support/Strings.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace wordbm {
namespace {

namespace fs = std::filesystem;

std::string todayText() {
    const std::time_t now = std::time(nullptr);
    char text[9] = {};
    std::strftime(text, sizeof text, "%Y%m%d", std::localtime(&now));
    return text;
}

// Answers like a user who confirms `answer`, or cancels when it has none; records what it was shown.
class ScriptedEditor : public FileNameTemplateEditor {
public:
    ScriptedEditor(std::optional<std::string> answer, std::string& shown, bool& released)
        : answer_(std::move(answer)), shown_(shown), released_(released) {}
    ~ScriptedEditor() override { released_ = true; }
    std::optional<std::string> Show(const FileNameTemplate&, const std::string& mask) override {
        shown_ = mask;
        return answer_;
    }

private:
    std::optional<std::string> answer_;
    std::string& shown_;
    bool& released_;
};

class FileNameTemplateTest : public ::testing::Test {
protected:
    // A control file written as the billing program does: cp1252, lines ending in CR LF.
    std::string controlFile(const std::vector<std::string>& rows) {
        std::string text = "KliKonto;RgNummer;RgDatum;BesrRunNr;KliName\r\n";
        for (const auto& row : rows) {
            text += row + "\r\n";
        }
        const std::string path = folder_ + "/Lauf.csv";
        std::ofstream(path, std::ios::binary) << utf8ToCp1252(text);
        return path;
    }

    std::string name(const std::string& mask, std::int32_t line = 1) {
        names.Template(mask);
        return names.DocName(line);
    }

    TempDir dir_;
    const std::string folder_ = dir_.path().string();
    MemoryMaskStore store;
    std::string shown;
    bool released = false;
    FileNameTemplate names{store, std::make_unique<ScriptedEditor>("&K&.&E&", shown, released)};
};

TEST_F(FileNameTemplateTest, StandardMasksWithoutControlFileUseTheTestValues) {
    names.WordPath("C:\\Forms\\Rechnung.docx");
    const std::string today = todayText();
    EXPECT_EQ(name(""), "C:\\Forms\\11111111-" + today + "-222222-Rechnung.docx");
    EXPECT_EQ(name(names.DefaultsValue(2)), "C:\\Forms\\" + today + "-11111111-222222-Rechnung.docx");
    EXPECT_EQ(name(names.DefaultsValue(3)), "C:\\Forms\\222222-11111111-" + today + "-Rechnung.docx");
    EXPECT_EQ(name(names.DefaultsValue(4)), "C:\\Forms\\11111111\\" + today + "-222222-Rechnung.docx");
    EXPECT_EQ(name("&L&;&G&;&C&"), "333333;Klientname;<csv-path>");
}

TEST_F(FileNameTemplateTest, StandardMasksWithControlFileUseTheRow) {
    names.WordPath(folder_ + "/Rechnung.docm");
    names.CSVPath(controlFile({"10000001;1;1.1.2026;1;Erste AG", "12345678;42;21.11.2026;7;Müller AG"}));
    const std::string dir = folder_ + "\\";
    EXPECT_EQ(name(names.DefaultsValue(1), 2), dir + "12345678-20261121-000042-Rechnung.docm");
    EXPECT_EQ(name(names.DefaultsValue(2), 2), dir + "20261121-12345678-000042-Rechnung.docm");
    EXPECT_EQ(name(names.DefaultsValue(3), 2), dir + "000042-12345678-20261121-Rechnung.docm");
    EXPECT_EQ(name(names.DefaultsValue(4), 2), dir + "12345678\\20261121-000042-Rechnung.docm");
    EXPECT_EQ(name("&L&-&G&-&C&", 2), "000007-Müller AG-" + folder_);
}

TEST_F(FileNameTemplateTest, BothPathsEmptyGivesPlaceholdersAndNoValidFolder) {
    names.Template("");
    EXPECT_EQ(names.DocName(1), "<word-path>\\11111111-" + todayText() + "-222222-Rechnung.<word-ext>");
    EXPECT_FALSE(names.IsValid(1));
}

TEST_F(FileNameTemplateTest, FolderAndExtensionComeFromEitherSeparator) {
    names.WordPath("C:\\Forms\\\\Rechnung.docx");
    EXPECT_EQ(name("&W&|&E&"), "C:\\Forms|docx");
    names.WordPath("/srv/v1.2/Rechnung");
    EXPECT_EQ(name("&W&|&E&"), "/srv/v1.2|");
}

TEST_F(FileNameTemplateTest, NumbersArePaddedAndCutToSixDigits) {
    names.CSVPath(controlFile({"1;42;;42;", "1;;;;", "1;1234567;;1234567;", "1;99999999999;;;"}));
    EXPECT_EQ(name("&R&|&L&", 1), "000042|000042");
    EXPECT_EQ(name("&R&|&L&", 2), "000000|000000");
    EXPECT_EQ(name("&R&|&L&", 3), "234567|234567");
    EXPECT_EQ(name("&R&", 4), "000000"); // too large for 32 bits: as if missing
}

TEST_F(FileNameTemplateTest, DateIsWrittenAsYearMonthDay) {
    names.CSVPath(controlFile({"1;1;5.3.2026;1;", "1;1;2026-12-24;1;", "1;1;;1;"}));
    EXPECT_EQ(name("&D&", 1), "20260305");
    EXPECT_EQ(name("&D&", 2), "20261224");
    EXPECT_EQ(name("&D&", 3), "18991230");
}

TEST_F(FileNameTemplateTest, MissingLineOrUnreadableFileGivesNeutralValues) {
    names.CSVPath(controlFile({"12345678;42;21.11.2026;7;Muster"}));
    EXPECT_EQ(name("[&K&|&R&|&D&|&L&|&G&]", 9), "[|000000|18991230|000000|]");
    names.CSVPath(folder_ + "/missing.csv");
    EXPECT_EQ(name("[&K&|&R&|&D&|&L&|&G&]"), "[|000000|18991230|000000|]");
}

TEST_F(FileNameTemplateTest, LowerCaseTagsAndOtherTextStayAsWritten) {
    EXPECT_EQ(name("&k&-&K&-%username%-&X&"), "&k&-11111111-%username%-&X&");
}

TEST_F(FileNameTemplateTest, EnvironmentVariablesAreReplacedWithTheirCurrentValue) {
    EnvGuard user("USERNAME", "anna");
    EnvGuard billing("BILLING", std::nullopt);
    names.WordPath("/forms/Rechnung.docx");
    EXPECT_EQ(name("%USERNAME%\\&K&.&E&%BILLING%"), "anna\\11111111.docx");
    EXPECT_EQ(names.EnvVarName(3), "%USERNAME%");
    EXPECT_EQ(names.EnvVarValue(3), "anna");
}

// A variable is the user's own setting and keeps its separators, like &W&; a value from the
// control file never adds a folder level, not even one that names a variable.
TEST_F(FileNameTemplateTest, VariablesKeepTheirFoldersValuesFromDataNever) {
    EnvGuard temp("TEMP", folder_);
    names.WordPath("/forms/Rechnung.docx");
    names.CSVPath(controlFile({"12/34;1;;1;A/B\\C"}));
    const std::string doc = name("%TEMP%\\&K&-&G&.&E&");
    EXPECT_EQ(doc, folder_ + "\\12_34-A_B_C.docx");
    EXPECT_EQ(fs::path(names.nativeDocPath(doc)).parent_path(), fs::path(folder_));

    names.CSVPath(controlFile({"&G&;1;;1;%TEMP%"}));
    const std::string flat = folder_.substr(1);
    EXPECT_EQ(name("&K&|&G&"),
              "_" + std::string(replaceAll(flat, "/", "_")) + "|_" + replaceAll(flat, "/", "_"));
}

TEST_F(FileNameTemplateTest, ValueHoldingALaterTagHasItReplacedToo) {
    EnvGuard temp("TEMP", "tmp");
    names.CSVPath(controlFile({"&G&;1;;1;%TEMP%"}));
    EXPECT_EQ(name("&K&|&G&"), "tmp|tmp");
}

// The Windows names read their Linux counterparts where they are unset.
TEST_F(FileNameTemplateTest, WindowsVariablesReadTheirLinuxCounterparts) {
    EnvGuard username("USERNAME", std::nullopt);
    EnvGuard user("USER", "bob");
    EnvGuard profile("USERPROFILE", std::nullopt);
    EnvGuard drive("HOMEDRIVE", std::nullopt);
    EnvGuard path("HOMEPATH", std::nullopt);
    EnvGuard home("HOME", "/home/bob");
    EnvGuard temp("TEMP", std::nullopt);
    EnvGuard tmpdir("TMPDIR", "/var/tmp/bob");
    EXPECT_EQ(name("%USERNAME%|%USERPROFILE%|%HOMEDRIVE%%HOMEPATH%|%TEMP%\\&R&"),
              "bob|/home/bob|/home/bob|/var/tmp/bob\\222222");
    EXPECT_EQ(names.EnvVarValue(4), "/var/tmp/bob");
    EnvGuard noTmpdir("TMPDIR", std::nullopt);
    EXPECT_EQ(name("%TEMP%"), "/tmp");
}

TEST_F(FileNameTemplateTest, GivenControlFileIsUsedInsteadOfReadingAgain) {
    names.CSVPath(controlFile({"11;1;;1;Alt"}));
    CSVfile loaded;
    loaded.ReadFile(names.CSVPath());
    controlFile({"22;1;;1;Neu"});
    EXPECT_EQ(name("&K&&G&"), "22Neu");
    EXPECT_EQ(names.DocName(1, loaded), "11Alt");
}

TEST_F(FileNameTemplateTest, EmptyTemplateLoadsStoredMaskOrTheFirstStandard) {
    names.Template("");
    EXPECT_EQ(names.Template(), "&W&\\&K&-&D&-&R&-Rechnung.&E&");
    store.stored = "&R&";
    names.Template("");
    EXPECT_EQ(names.Template(), "&R&");
    EXPECT_EQ(store.stored, "&R&"); // writing the mask does not store it
}

TEST_F(FileNameTemplateTest, EditReturnsFalseButKeepsTheConfirmedMask) {
    EXPECT_FALSE(names.Edit("&D&"));
    EXPECT_EQ(shown, "&D&");
    EXPECT_EQ(names.Template(), "&K&.&E&");
    FileNameTemplate cancelled(store, std::make_unique<ScriptedEditor>(std::nullopt, shown, released));
    cancelled.Template("&D&");
    EXPECT_FALSE(cancelled.Edit());
    EXPECT_EQ(cancelled.Template(), "&D&");
}

TEST_F(FileNameTemplateTest, TiniReleasesTheEditorAndStoresTheMask) {
    names.Template("&G&");
    names.Tini();
    EXPECT_TRUE(released);
    EXPECT_EQ(store.stored, "&G&");
    EXPECT_FALSE(names.Edit());
    EXPECT_EQ(names.Template(), "&G&");
}

TEST_F(FileNameTemplateTest, IsValidChecksTheFolderOfTheName) {
    names.WordPath(folder_ + "/Rechnung.docx");
    names.Template("");
    EXPECT_TRUE(names.IsValid(1));
    names.Template(names.DefaultsValue(4)); // the account folder does not exist yet
    EXPECT_FALSE(names.IsValid(1));
    names.Template("Rechnung.docx");
    EXPECT_FALSE(names.IsValid(1));
}

TEST_F(FileNameTemplateTest, TablesAnswerByPositionAndRejectOthers) {
    EXPECT_EQ(names.TagsCount(), 8);
    EXPECT_EQ(names.EnvVarCount(), 8);
    EXPECT_EQ(names.TagsValue(8) + " - " + names.TagsName(8), "&G& - Klientenname (Geschäft)");
    EXPECT_EQ(names.DefaultsCount(), 4);
    EXPECT_THROW(names.TagsName(0), InvalidArgumentError);
    EXPECT_THROW(names.EnvVarName(9), InvalidArgumentError);
    EXPECT_THROW(names.DefaultsValue(5), InvalidArgumentError);
}

} // namespace
} // namespace wordbm
