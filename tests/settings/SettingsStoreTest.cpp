#include "kit/EnvGuard.h"
#include "kit/FileBytes.h"
#include "kit/TempDir.h"
#include "settings/IniSettingsStore.h"
#include "settings/MemorySettingsStore.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace wordbm {
namespace {

using Pairs = SettingsStore::Pairs;

const std::string App = "Tarvell\\KDX6";
const std::string Merger = "Billing\\Merger";

TEST(IniSettingsStore, KeepsSectionsInTheApplicationsIniFile) {
    TempDir root;
    IniSettingsStore store(root.path().string());
    const std::string file = root / "Tarvell/KDX6.ini";
    EXPECT_EQ(store.filePath(App), file);

    store.saveSetting(App, Merger, "DOCOpen", "String>/home/u");
    store.saveSetting(App, "Other", "k", "v");
    store.saveSetting(App, Merger, "Options", "String>PDF;Close");
    EXPECT_EQ(readBytes(file),
              "[Billing\\Merger]\r\nDOCOpen=String>/home/u\r\nOptions=String>PDF;Close\r\n\r\n"
              "[Other]\r\nk=v\r\n");
    EXPECT_EQ(store.getSetting(App, "billing\\merger", "docopen"), "String>/home/u");
    EXPECT_EQ(store.getSetting(App, Merger, "missing"), std::nullopt);
    EXPECT_EQ(store.getAllSettings(App, Merger),
              (Pairs{{"DOCOpen", "String>/home/u"}, {"Options", "String>PDF;Close"}}));

    store.deleteSetting(App, Merger, "DOCOpen");
    EXPECT_EQ(store.getAllSettings(App, Merger), (Pairs{{"Options", "String>PDF;Close"}}));
    store.deleteSection(App, Merger);
    EXPECT_EQ(store.getAllSettings(App, "Other"), (Pairs{{"k", "v"}}));
    store.deleteSection(App, "Other");
    EXPECT_FALSE(std::filesystem::exists(file)); // no section left, no file left
}

TEST(IniSettingsStore, FindsItsFolderAndStaysInsideIt) {
    TempDir home;
    {
        EnvGuard xdg("XDG_CONFIG_HOME", home / "xdg");
        EXPECT_EQ(IniSettingsStore().filePath(App), home / "xdg/Tarvell/KDX6.ini");
    }
    EnvGuard homeVariable("HOME", home.path().string());
    for (const std::optional<std::string>& xdg :
         {std::optional<std::string>(), std::optional<std::string>("rel")}) {
        EnvGuard variable("XDG_CONFIG_HOME", xdg);
        EXPECT_EQ(IniSettingsStore().filePath(App), home / ".config/Tarvell/KDX6.ini");
    }
    IniSettingsStore store(home.path().string());
    EXPECT_EQ(store.filePath("..\\..\\etc/./passwd"), home / "etc/passwd.ini");
    EXPECT_EQ(store.filePath("..\\"), "");
    store.saveSetting("..", "S", "k", "v"); // nowhere to go: dropped

    std::filesystem::create_directories(home / "Tarvell");
    writeBytes(home / "Tarvell/KDX6.ini", std::string("\x7F"
                                                      "ELF\0\0binary",
                                                      12));
    EXPECT_TRUE(store.getAllSettings(App, Merger).empty());
    store.saveSetting(App, Merger, "k", "two\r\nlines=forged");
    EXPECT_EQ(store.getAllSettings(App, Merger), (Pairs{{"k", "two  lines=forged"}}));
}

// The window rewrites its settings file through a link to the linked file, and a file it could not
// read in full (no section, binary, UTF-16, hand-written notes) is kept beside it first.
TEST(IniSettingsStore, WritesThroughALinkAndKeepsWhatItCouldNotRead) {
    TempDir root;
    const std::string file = root / "Tarvell/KDX6.ini";
    std::filesystem::create_directories(root / "Tarvell");
    writeBytes(root / "real.ini", "[Billing\\Merger]\nOptions=String>PDF\n");
    std::filesystem::create_symlink(root / "real.ini", file);
    IniSettingsStore store(root.path().string());

    store.saveSetting(App, Merger, "DOCOpen", "String>/home/u");
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_EQ(readBytes(root / "real.ini"),
              "[Billing\\Merger]\r\nOptions=String>PDF\r\nDOCOpen=String>/home/u\r\n");
    // The window's options rewrite their section whole: deleted, then saved key by key.
    store.deleteSection(App, Merger);
    store.saveSetting(App, Merger, "Options", "String>PDF");
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_EQ(readBytes(root / "real.ini"), "[Billing\\Merger]\r\nOptions=String>PDF\r\n");
    EXPECT_FALSE(std::filesystem::exists(file + ".bak")); // all of it was understood

    std::filesystem::remove(file);
    const std::string unreadable[] = {std::string("no section=1\r\n"), std::string("\xff\xfe[\0B\0]\0", 8),
                                      "[S]\r\n# a note\r\nk=v\r\n" + std::string(1 << 20, 'x')};
    for (const std::string& bytes : unreadable) {
        writeBytes(file, bytes);
        store.saveSetting(App, Merger, "Options", "String>PDF");
        EXPECT_EQ(store.getSetting(App, Merger, "Options"), "String>PDF");
        store.deleteSection(App, Merger); // the only section: the file goes, its copy stays
        writeBytes(file, bytes);
        store.deleteSection(App, "S");
    }
    EXPECT_EQ(readBytes(file + ".bak"), unreadable[0]);
    EXPECT_EQ(readBytes(file + ".bak1"), unreadable[0]);
    EXPECT_EQ(readBytes(file + ".bak2"), unreadable[1]);
    EXPECT_EQ(readBytes(file + ".bak5"), unreadable[2]);
}

TEST(MemorySettingsStore, ComparesNamesIgnoringCaseAndDropsWhileFailing) {
    MemorySettingsStore store;
    store.saveSetting(App, Merger, "Key", "1");
    store.saveSetting("tarvell\\kdx6", "BILLING\\MERGER", "KEY", "2");
    store.setFailing(true);
    store.saveSetting(App, Merger, "New", "x");
    store.deleteSection(App, Merger);
    EXPECT_EQ(store.getSetting(App, Merger, "Key"), std::nullopt);
    store.setFailing(false);
    EXPECT_EQ(store.getAllSettings(App, Merger), (Pairs{{"Key", "2"}}));
}

} // namespace
} // namespace wordbm
