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
