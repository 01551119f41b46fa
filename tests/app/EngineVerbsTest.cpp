// The batch verbs that run the engine: what they print, what they write and how they exit.
#include "app/EngineVerbs.h"

#include "kit/EnvGuard.h"
#include "kit/FileBytes.h"
#include "kit/TempDir.h"
#include "support/Cp1252.h"
#include "support/Strings.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

namespace wordbm::testing {
namespace {

namespace fs = std::filesystem;

const std::string Examples = std::string(WORDBM_TEST_SOURCE_DIR) + "/../../examples";
const std::string OldForm =
    std::string(WORDBM_TEST_SOURCE_DIR) + "/../engine/forms/Rechnung-Seriendruck.docx";

class Verbs : public ::testing::Test {
protected:
    Verbs()
        : base_("TARVELL_DEBUG", folder_.path().string()), config_("XDG_CONFIG_HOME", folder_ / "config"),
          verbs_(out_, err_, false) {
        fs::copy_file(Examples + "/Rechnung.docx", form());
        fs::copy_file(Examples + "/Rechnungslauf.csv", csv());
        fs::copy_file(OldForm, folder_ / "Alt.docx");
    }
    std::string form() const { return folder_ / "Rechnung.docx"; }
    std::string csv() const { return folder_ / "Lauf.csv"; }
    std::string oldForm() const { return folder_ / "Alt.docx"; }
    void expectInputsUntouched() const {
        EXPECT_EQ(readBytes(form()), readBytes(Examples + "/Rechnung.docx"));
        EXPECT_EQ(readBytes(csv()), readBytes(Examples + "/Rechnungslauf.csv"));
        EXPECT_EQ(readBytes(oldForm()), readBytes(OldForm));
    }

    TempDir folder_;
    EnvGuard base_;
    EnvGuard config_;
    std::ostringstream out_;
    std::ostringstream err_;
    EngineVerbs verbs_;
};

TEST_F(Verbs, AnalyzePrintsTheCountsTheWindowShows) {
    EXPECT_EQ(verbs_.analyze(form(), false), EngineVerbs::ExitFine);

    EXPECT_EQ(out_.str(), "[Word-Rechnungsformular] KDX5-Exportfelder: 63-total\n"
                          "Textfelder: 53-total, 53-bekannt, 0-unbekannt\n"
                          "Seriendruckfelder: 0-total, 0-bekannt, 0-unbekannt\n");
    expectInputsUntouched();
}

TEST_F(Verbs, AMissingFormCannotBeUsed) {
    EXPECT_EQ(verbs_.analyze(folder_ / "Fehlt.docx", false), EngineVerbs::ExitUnusable);
    EXPECT_NE(err_.str().find("Datei nicht gefunden!"), std::string::npos) << err_.str();
}

TEST_F(Verbs, ConvertSavesTheBookmarkedFormElsewhereAndLeavesTheUnknownField) {
    const std::string converted = folder_ / "Neu.docx";

    EXPECT_EQ(verbs_.convert(oldForm(), converted), EngineVerbs::ExitFine);
    EXPECT_NE(out_.str().find("3 Seriendruckfelder wurden duch Textfelder ersetzt!"), std::string::npos)
        << out_.str();
    out_.str("");
    EXPECT_EQ(verbs_.analyze(converted, false), EngineVerbs::ExitFine);

    EXPECT_NE(out_.str().find("Seriendruckfelder: 1-total, 0-bekannt, 1-unbekannt"), std::string::npos)
        << out_.str();
    expectInputsUntouched();
}

TEST_F(Verbs, ResetAndVerifyWriteOnlyTheirOutput) {
    EXPECT_EQ(verbs_.reset(oldForm(), folder_ / "Ohne.docx"), EngineVerbs::ExitFine);
    EXPECT_NE(out_.str().find("3/3 Seriendruckfelder gelöscht!"), std::string::npos) << out_.str();
    EXPECT_EQ(verbs_.verify(oldForm(), folder_ / "Geprueft.docx"), EngineVerbs::ExitFine);
    EXPECT_NE(out_.str().find("-angepasst"), std::string::npos) << out_.str();
    EXPECT_TRUE(fs::exists(folder_ / "Ohne.docx"));
    EXPECT_TRUE(fs::exists(folder_ / "Geprueft.docx"));
    expectInputsUntouched();
}

TEST_F(Verbs, TheFormItselfIsNoOutput) {
    EXPECT_EQ(verbs_.convert(oldForm(), oldForm()), EngineVerbs::ExitUnusable);
    expectInputsUntouched();
}

TEST_F(Verbs, MergeTestListsTheNamesInTheOutFolder) {
    EngineVerbs::MergeRequest request{form(), csv(), "&W&\\&R&-Rechnung.&E&", folder_ / "out", {}, true, 1};

    EXPECT_EQ(verbs_.merge(request), EngineVerbs::ExitFine);

    const std::string list = out_.str();
    EXPECT_EQ(list.rfind("Dateinamen testen\n  " + folder_ / "out" + "/024100-Rechnung\n", 0), 0u) << list;
    EXPECT_NE(list.find("24   Total\n24   Ok\n0   Fehler\n"), std::string::npos) << list;
    EXPECT_TRUE(fs::is_empty(folder_ / "out"));
}

// The sample run after a clerk fixed a row in a spreadsheet, which saved it as UTF-8 with LF.
TEST_F(Verbs, AControlFileSavedWithLfHoldsNoInvoiceAndTheMergeSaysWhy) {
    writeBytes(csv(), replaceAll(cp1252ToUtf8(readBytes(csv())), "\r\n", "\n"));
    EngineVerbs::MergeRequest request{form(), csv(), "&W&\\&R&-Rechnung.&E&", folder_ / "out", {}, true, 1};

    EXPECT_EQ(verbs_.merge(request), EngineVerbs::ExitUnusable);

    const std::string text = err_.str();
    EXPECT_NE(text.find("Lauf.csv\nDie Steuerdatei enthält keine Rechnungen.\nHinweis: Die Zeilen der "
                        "Steuerdatei enden nur mit LF"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("Zeichen in UTF-8 (z. B. «ü», gelesen als «Ã¼»)"), std::string::npos) << text;
    EXPECT_EQ(out_.str().find("Dateinamen testen"), std::string::npos);
}

// With Windows line ends kept, the rows are there; their text is read as cp1252 all the same.
TEST_F(Verbs, AUtf8ControlFileIsReadAsAnsiWithAHint) {
    writeBytes(csv(), "\xEF\xBB\xBF" + cp1252ToUtf8(readBytes(csv())));
    EngineVerbs::MergeRequest request{form(), csv(), "&W&\\&G&-&R&.&E&", folder_ / "out", {}, true, 1};

    EXPECT_EQ(verbs_.merge(request), EngineVerbs::ExitFine);

    EXPECT_NE(out_.str().find("/BÃ¤ckerei MÃ¼ller GmbH-024100\n"), std::string::npos) << out_.str();
    const std::string text = err_.str();
    EXPECT_NE(text.find("Hinweis: Die Steuerdatei beginnt mit einer UTF-8-Kennung (BOM)."), std::string::npos)
        << text;
    EXPECT_NE(text.find("Zeichen in UTF-8"), std::string::npos) << text;
    EXPECT_EQ(text.find("keine Rechnungen"), std::string::npos) << text;
}

TEST_F(Verbs, MergeMakesEveryInvoiceSideBySideAndFailsOnAMissingControlFile) {
    EngineVerbs::MergeRequest request{form(), csv(), "&W&\\&R&.&E&", folder_ / "out", {}, false, 2};
    request.choices.Close = true;

    EXPECT_EQ(verbs_.merge(request), EngineVerbs::ExitFine);
    EXPECT_TRUE(fs::exists(folder_ / "out/024124.docx"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_ / "out"), fs::directory_iterator()), 24);
    expectInputsUntouched();

    request.csv = folder_ / "Fehlt.csv";
    EXPECT_EQ(verbs_.merge(request), EngineVerbs::ExitUnusable);
}

TEST_F(Verbs, AnInvoiceThatCannotBeSavedFailsTheMerge) {
    fs::create_directories(folder_ / "out/024100.docx/x");
    EngineVerbs::MergeRequest request{form(), csv(), "&W&\\&R&.&E&", folder_ / "out", {}, false, 1};

    EXPECT_EQ(verbs_.merge(request), EngineVerbs::ExitFailed);
    EXPECT_NE(err_.str().find("Die Rechnung wurde nicht gespeichert!"), std::string::npos) << err_.str();
    // The failed invoice is marked in the list; the others are not.
    EXPECT_NE(out_.str().find("\n! " + (folder_ / "out/024100")), std::string::npos) << out_.str();
    EXPECT_NE(out_.str().find("\n  " + (folder_ / "out/024101")), std::string::npos) << out_.str();
}

// The window's settings are the user's: a merge reads the remembered mask but never rewrites the
// file, whether it lists names, makes invoices or fails, and a linked settings file stays a link.
TEST_F(Verbs, MergeLeavesTheSettingsFileAndItsLinkAsTheyWere) {
    const std::string settings = "; edited by hand\r\n[Billing\\Merger]\r\n"
                                 "MergerTemplate=String>&W&\\&R&-Lauf.&E&\r\nOptions=PDF;Close\r\n"
                                 "[Other]\nkey=value\n";
    fs::create_directories(folder_ / "config/Tarvell");
    writeBytes(folder_ / "dotfiles-KDX6.ini", settings);
    fs::create_symlink(folder_ / "dotfiles-KDX6.ini", (folder_ / "config/Tarvell/KDX6.ini"));
    EngineVerbs::MergeRequest request{form(), csv(), "", (folder_ / "out"), {}, true, 1};

    EXPECT_EQ(verbs_.merge(request), EngineVerbs::ExitFine);
    EXPECT_NE(out_.str().find("/024100-Lauf\n"), std::string::npos) << out_.str();
    request.testOnly = false;
    EXPECT_EQ(verbs_.merge(request), EngineVerbs::ExitFine);
    request.csv = folder_ / "Fehlt.csv";
    EXPECT_EQ(verbs_.merge(request), EngineVerbs::ExitUnusable);

    EXPECT_TRUE(fs::is_symlink(folder_ / "config/Tarvell/KDX6.ini"));
    EXPECT_EQ(readBytes(folder_ / "dotfiles-KDX6.ini"), settings);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_ / "config/Tarvell"), fs::directory_iterator()), 1);
}

TEST(EngineVerbsMask, TheOutFolderTakesThePlaceOfTheMasksFolders) {
    EXPECT_EQ(EngineVerbs::maskInFolder("&W&\\&K&-&R&.&E&", "/tmp/out"), "/tmp/out\\&K&-&R&.&E&");
    EXPECT_EQ(EngineVerbs::maskInFolder("&R&.&E&", "/tmp/out"), "/tmp/out\\&R&.&E&");
}

} // namespace
} // namespace wordbm::testing
