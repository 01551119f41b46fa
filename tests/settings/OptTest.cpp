#include "settings/Opt.h"

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

TEST(Opt, DerivesApplicationKeyAndSectionFromThePaths) {
    Opt opt(nullptr);
    EXPECT_EQ(opt.FullPath(), "Tarvell\\KDX6\\Interface\\Options");
    struct Case {
        std::optional<std::string> base, prog, folder;
        std::string appName, section;
    };
    for (const Case& c :
         {Case{std::nullopt, " Billing ", "Merger", App, Merger}, Case{App, "", "", "Tarvell", "KDX6"},
          Case{"Tarvell\\\\KDX6", "", "a\\\\b", App, "a\\b"}, Case{"", "", "Solo", "", "Solo"},
          Case{"  ", "", "", "", "Opt"}}) {
        opt.Init(c.base, c.prog, c.folder);
        EXPECT_EQ(opt.AppName() + "|" + opt.Section(), c.appName + "|" + c.section) << opt.FullPath();
    }
}

TEST(Opt, EncodesAndDecodesTypedTexts) {
    // A failed conversion, an unknown type name and a missing one (without default) give text.
    using P = std::pair<std::string, Variant>;
    const P decoded[] = {P{"Boolean>True", true},
                         P{"Long>12", std::int32_t{12}},
                         P{"Integer>7", std::int16_t{7}},
                         P{"Byte>255", std::uint8_t{255}},
                         P{"Currency>1'234.56", Currency{12345600}},
                         P{"Date>31.12.2024", Date{45657}},
                         P{"Variant>a>b", "a>b"},
                         P{"Unknown>x", "x"},
                         P{"Long>abc", "abc"},
                         P{"Integer>40000", "40000"},
                         P{"Single>1e300", "1e300"},
                         P{"Date>32.13.2024", "32.13.2024"},
                         P{"12", "12"}};
    for (const auto& [stored, value] : decoded) {
        EXPECT_EQ(Opt::decode(stored), value) << stored;
    }
    EXPECT_TRUE(Opt::decode("Null>").isNull());
    EXPECT_EQ(Opt::decode("12", Variant(std::int32_t{0})), Variant(std::int32_t{12}));
    EXPECT_EQ(Opt::decode("x", Variant(false)), Variant("x"));

    for (const Variant& value : {Variant("t>x"), Variant(std::int16_t{-3}), Variant(0.1f), Variant(2.25),
                                 Variant(Currency{15}), Variant(Date{45657.5}), Variant::null()}) {
        EXPECT_EQ(Opt::decode(Opt::encode(value)), value) << Opt::encode(value);
    }
    EXPECT_EQ(Opt::encode(Variant()), "String>");
    EXPECT_EQ(Opt::encode(Variant(Decimal{2.5})), "Decimal>2.5");
}

TEST(Opt, KeepsChangesInTheCacheUntilUpdate) {
    auto store = std::make_shared<MemorySettingsStore>();
    store->saveSetting(App, Merger, "Old", "Long>5");
    store->saveSetting(App, Merger, "Raw", "42");
    int calls = 0;
    {
        Opt opt(store);
        opt.Init(std::nullopt, "Billing", "Merger");
        EXPECT_EQ(opt.Item("old"), Variant(std::int32_t{5}));
        EXPECT_EQ(opt.Item("Raw", Variant(std::int16_t{0})), Variant(std::int16_t{42}));
        EXPECT_EQ(opt.Item("Missing", Variant(true)), Variant(true));
        opt.ItemLet("Template", "&W&\\&K&.&E&");
        EXPECT_EQ(store->getSetting(App, Merger, "Template"), std::nullopt);
        opt.ItemDel("Old");
        EXPECT_EQ(store->getSetting(App, Merger, "Old"), std::nullopt);
        EXPECT_EQ(opt.Items().size(), 3u);

        opt.setEventHook([&calls] { ++calls; });
        store->saveSetting(App, Merger, "Stale", "String>x");
        opt.Update();
        EXPECT_EQ(calls, 2); // between three entries
    }
    EXPECT_EQ(
        store->getAllSettings(App, Merger),
        (Pairs{{"Raw", "Integer>42"}, {"Missing", "Boolean>True"}, {"Template", "String>&W&\\&K&.&E&"}}));

    store->saveSetting(App, "Interface\\Options", "Kept", "String>x");
    { Opt untouched(store); } // never loaded: must not wipe what is stored
    EXPECT_EQ(store->getAllSettings(App, "Interface\\Options").size(), 1u);
    EXPECT_EQ(store->getAllSettings(App, Merger).size(), 3u);
}

TEST(Opt, DirectModeWritesAtOnceAndStoreFailuresKeepTheCache) {
    auto store = std::make_shared<MemorySettingsStore>();
    Opt opt(store);
    opt.Init(std::nullopt, "Billing", "Merger", true);
    opt.ItemLet("n", std::int32_t{3});
    EXPECT_EQ(store->getSetting(App, Merger, "n"), "Long>3");
    store->saveSetting(App, Merger, "n", "Long>4");
    EXPECT_EQ(opt.Item("n"), Variant(std::int32_t{4}));
    store->saveSetting(App, Merger, "raw", "7");
    EXPECT_EQ(opt.Item("raw", Variant(1.0)), Variant(7.0));

    store->setFailing(true);
    opt.ItemLet("kept", "yes");
    opt.ItemDelAll();
    opt.ItemLet("after", "x");
    EXPECT_EQ(opt.Item("after", Variant("default")), Variant("default")); // direct mode reads the store
    store->setFailing(false);
    EXPECT_EQ(store->getAllSettings(App, Merger).size(), 2u);
    opt.Update();
    EXPECT_EQ(store->getAllSettings(App, Merger), (Pairs{{"after", "String>default"}}));
}

TEST(Opt, SurvivesInTheIniFileForTheNextRun) {
    TempDir config;
    EnvGuard xdg("XDG_CONFIG_HOME", config.path().string());
    {
        Opt opt(std::make_shared<IniSettingsStore>());
        opt.Init(std::nullopt, "Billing", "Merger");
        opt.ItemLet("MergerTemplate", "&W&\\&K&-&D&-&R&-Rechnung.&E&");
        opt.ItemLet("Count", std::int32_t{12});
        opt.ItemLet("Stand", Date{45657.25});
    }
    EXPECT_TRUE(std::filesystem::exists(config / "Tarvell/KDX6.ini"));
    Opt next(std::make_shared<IniSettingsStore>());
    next.Init(std::nullopt, "Billing", "Merger");
    EXPECT_EQ(next.Item("mergertemplate"), Variant("&W&\\&K&-&D&-&R&-Rechnung.&E&"));
    EXPECT_EQ(next.Item("Count"), Variant(std::int32_t{12}));
    EXPECT_EQ(next.Item("Stand"), Variant(Date{45657.25}));
}

} // namespace
} // namespace wordbm
