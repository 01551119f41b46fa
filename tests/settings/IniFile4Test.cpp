#include "settings/IniFile4.h"

#include "kit/EnvGuard.h"
#include "kit/FileBytes.h"
#include "kit/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace wordbm {
namespace {

TEST(IniFile4, ReadsHeadersAndEntriesByTheLineRules) {
    TempDir folder;
    writeBytes(folder / "in.ini", "lost=1\r\n"
                                  "[Main] trailing text\r\n"
                                  " a = 1 \r\n"
                                  ";x=comment-like\n"
                                  "no equals sign\r"
                                  "=starts with equals\r\n"
                                  "[unclosed\r\n"
                                  "b=x=y\r\n"
                                  "[MAIN]\r\n"
                                  "C=3\r\n");
    IniFile4 ini;
    ini.FilePath(folder / "in.ini");

    EXPECT_EQ(ini.Value("Main", "lost"), "");
    EXPECT_EQ(ini.Value("main", "a "), " 1"); // blanks around "=" belong to key and value
    EXPECT_EQ(ini.Value("Main", ";x"), "comment-like");
    EXPECT_EQ(ini.Value("Main", "b"), "x=y");
    EXPECT_EQ(ini.ValueFull("Main", "c"), "C=3");
    EXPECT_EQ(ini.ValueFull("Other", "a"), "");
    EXPECT_EQ(ini.Stream(), "[Main]\r\na = 1\r\n;x=comment-like\r\nb=x=y\r\nC=3\r\n");
}

TEST(IniFile4, WritesEntriesWithTheirCaseOrderAndEmptyLines) {
    IniFile4 ini;
    ini.Value("Main", "a", "1");
    EXPECT_EQ(ini.Stream(), "[Main]\r\na=1\r\n");

    ini.Value("MAIN", "Key", "2");
    ini.Value("main", "A", "3"); // moves behind Key and keeps the new spelling
    ini.Value("Main", "gone", "");
    ini.Value("Main", "_", "header clash");
    ini.Value("x;Second", "[k", "hidden");
    EXPECT_EQ(ini.Section("mAiN").front(), "[Main]");
    EXPECT_EQ(ini.ValueFull("Main", "_"), "[Main]");
    EXPECT_EQ(ini.Value("Main", "gone"), "");
    EXPECT_EQ(ini.Value("x;second", "[K"), "hidden");
    EXPECT_EQ(ini.Stream(), "[Main]\r\nKey=2\r\nA=3\r\n\r\n\r\nSecond]\r\n");

    ini.Clear();
    EXPECT_EQ(ini.Stream(), "");
}

TEST(IniFile4, RoundTripsCp1252TextThroughARealFile) {
    TempDir folder;
    const std::string path = folder / "round.ini";
    IniFile4 ini;
    ini.Value("Zürich", "Grösse", "Ärger über Öl");
    ini.Value("Zürich", "leer", "");
    ini.WriteFile(path, true);
    const std::string written = "[Z\xFCrich]\r\nGr\xF6sse=\xC4rger \xFC"
                                "ber \xD6l\r\n\r\n";
    EXPECT_EQ(readBytes(path), written);

    IniFile4 again;
    again.ReadFile(path);
    EXPECT_EQ(again.Value("zÜrich", "GRÖSSE"), "Ärger über Öl");
    EXPECT_EQ(again.Stream(), "[Zürich]\r\nGrösse=Ärger über Öl\r\n"); // the empty key is gone
    EXPECT_TRUE(again.Exists());

    IniFile4 other;
    other.Value("New", "k", "v");
    other.WriteFile(path, false);
    IniFile4().WriteFile(path, true); // no sections: nothing written
    EXPECT_EQ(readBytes(path), written);
    EXPECT_FALSE(IniFile4().Exists());

    other.WriteFile(path, true);
    EXPECT_EQ(readBytes(path), "[New]\r\nk=v\r\n");
    other.Delete();
    EXPECT_FALSE(other.Exists());
    other.Delete(); // a second delete is silently nothing
}

TEST(IniFile4, LeavesTheTargetIntactWhenWritingFails) {
    TempDir folder;
    const std::string target = folder / "settings.ini";
    std::filesystem::create_directory(target); // rename over a folder fails, even for root
    writeBytes(target + "/inside.txt", "keep");

    IniFile4 ini;
    ini.Value("Main", "a", "1");
    ini.WriteFile(target, true);
    ini.Delete();

    EXPECT_TRUE(std::filesystem::is_directory(target));
    EXPECT_EQ(readBytes(target + "/inside.txt"), "keep");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1); // no temp file left
}

TEST(IniFile4, ReadsHostileFilesAsNeutralContent) {
    TempDir folder;
    const std::string huge(1 << 20, 'x');
    writeBytes(folder / "huge.ini", "[S]\r\nbig=" + huge + "\r\n[" + huge + "\r\n" + huge + "\r\n");
    writeBytes(folder / "nosection.ini", "a=1\r\nb=2\r\n");
    constexpr char junk[] = "\0[\0]\0=\xFF\xFE\x81\r\n\x89PNG\x1A\0\0";
    writeBytes(folder / "binary.ini", std::string(junk, sizeof junk - 1));

    IniFile4 ini;
    ini.FilePath(folder / "huge.ini");
    EXPECT_EQ(ini.Value("s", "big").size(), huge.size());
    for (const std::string name : {"nosection.ini", "binary.ini", "missing.ini", ""}) {
        ini.FilePath(folder / name); // "" reads the folder itself
        EXPECT_EQ(ini.Stream(), "") << name;
    }
    writeBytes(folder / "nul.ini", std::string("[Bin]\r\nk=a\0b\r\n", 14));
    ini.FilePath(folder / "nul.ini");
    EXPECT_EQ(ini.Value("Bin", "k"), std::string("a\0b", 3));

    std::string many = "[Big]\r\n";
    for (int i = 0; i < 100000; ++i) {
        many += "key" + std::to_string(i) + "=" + std::to_string(i) + "\r\n";
    }
    writeBytes(folder / "many.ini", many);
    ini.FilePath(folder / "many.ini");
    EXPECT_EQ(ini.Value("big", "KEY99999"), "99999");
    EXPECT_EQ(ini.Section("Big").size(), 100001u);
}

} // namespace
} // namespace wordbm
