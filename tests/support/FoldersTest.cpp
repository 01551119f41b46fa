#include "support/Folders.h"

#include "kit/EnvGuard.h"
#include "kit/TempDir.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <set>

using namespace wordbm;
namespace fs = std::filesystem;

namespace {

// Every variable the search reads, TMPDIR included because it decides the system temp folder.
EnvGuard searchVariables() {
    return EnvGuard{
        "TARVELL_DEBUG", "USERPROFILE", "HOME",   "HOMEDRVE",          "HOMEPATH",        "TEMP",
        "TMP",           "HOMEDRIVE",   "TMPDIR", "XDG_DOCUMENTS_DIR", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"};
}

std::string makeFolder(const std::string& path) {
    fs::create_directories(path);
    return path;
}

// A folder whose owner cannot write.
std::string makeReadOnlyFolder(const std::string& path) {
    makeFolder(path);
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_exec);
    return path;
}

// The same path written the way Windows users would write it.
std::string withBackslashes(std::string path) {
    for (char& c : path) {
        c = c == '/' ? '\\' : c;
    }
    return path;
}

} // namespace

TEST(Folders, PathJoinPutsExactlyOneBackslashBetween) {
    EXPECT_EQ(PathJoin("C:\\Data\\", "\\_temp_"), "C:\\Data\\_temp_");
    EXPECT_EQ(PathJoin("", "x"), "\\x");
    EXPECT_EQ(PathJoin("", ""), "\\");
    EXPECT_EQ(PathJoin("  C:\\Data  ", "  _temp_  "), "C:\\Data\\_temp_");
    EXPECT_EQ(PathJoin("a", "\\\\b"), "a\\\\b"); // only one leading backslash is dropped
    EXPECT_EQ(PathJoin("/home/u", "Documents"), "/home/u\\Documents");
    EXPECT_EQ(nativePath(PathJoin("/home/u", "Documents")), "/home/u/Documents");
    EXPECT_EQ(nativePath("\\\\srv\\share"), "//srv/share");
}

TEST(Folders, TestFileNameHasSixDigitsBetweenMarkers) {
    const std::regex form(R"(_\$_\$_[0-9]{6}_\$_\$_)");
    std::set<std::string> names;
    for (int i = 0; i < 50; ++i) {
        const std::string name = TestFileName();
        EXPECT_TRUE(std::regex_match(name, form)) << name;
        names.insert(name);
    }
    EXPECT_GT(names.size(), 1u);
}

TEST(Folders, FolderUsableTestsExistenceAndWritingWithoutLeavingAFile) {
    TempDir dir;
    EXPECT_TRUE(FolderUsable(dir.path().string(), false));
    EXPECT_TRUE(FolderUsable(withBackslashes(dir.path().string()), false));
    EXPECT_EQ(TempDir::entriesIn(dir.path()), 0u);
    EXPECT_FALSE(FolderUsable(dir / "missing", true));
    EXPECT_FALSE(FolderUsable("", true));
    EXPECT_FALSE(FolderUsable(std::string(dir.path().string() + '\0' + "x"), true));
    { std::ofstream(dir / "file") << "x"; }
    EXPECT_FALSE(FolderUsable(dir / "file", true));

    const std::string locked = makeReadOnlyFolder(dir / "locked");
    EXPECT_TRUE(FolderUsable(locked, true));
    if (TempDir::runningAsRoot()) {
        GTEST_SKIP() << "root writes into read-only folders";
    }
    EXPECT_FALSE(FolderUsable(locked, false));
    EXPECT_EQ(TempDir::entriesIn(locked), 0u);
}

TEST(Folders, BaseFolderCandidatesInOrder) {
    const EnvGuard guard = searchVariables();
    TempDir dir;
    EnvGuard::set("TMPDIR", makeFolder(dir / "systemp"));
    // The last fallback is a folder of the user's own, not the temp folder others can read.
    const std::string own = BaseFolderGet(false, false, false);
    EXPECT_EQ(fs::path(own).parent_path(), dir / "systemp");
    EXPECT_EQ(fs::status(own).permissions() & fs::perms::all, fs::perms::owner_all);
    EnvGuard::set("HOME", makeFolder(dir / "nohome"));
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "nohome/.cache/Tarvell");
    EXPECT_EQ(fs::status(dir / "nohome/.cache/Tarvell").permissions() & fs::perms::all, fs::perms::owner_all);
    ::unsetenv("HOME");

    EnvGuard::set("HOMEDRIVE", makeFolder(dir / "drive"));
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "drive");
    EnvGuard::set("TMP", makeFolder(dir / "tmp"));
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "tmp");
    EnvGuard::set("TEMP", withBackslashes(makeFolder(dir / "temp")));
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "temp") << "returned as a native path";

    // HOMEDRIVE is not the drive of candidates 4 and 5: only the misspelt HOMEDRVE is.
    EnvGuard::set("HOMEDRIVE", "C:");
    EnvGuard::set("HOMEPATH", withBackslashes(makeFolder(dir / "homepath")));
    makeFolder(dir / "homepath/Eigene Dateien");
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "homepath/Eigene Dateien");
    makeFolder(dir / "homepath/Documents");
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "homepath/Documents");
    EnvGuard::set("HOMEDRVE", "C:");
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "temp");

    EnvGuard::set("HOME", makeFolder(dir / "home"));
    makeFolder(dir / "home/Eigene Dateien");
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "home/Eigene Dateien")
        << "HOME stands in for USERPROFILE";
    EnvGuard::set("USERPROFILE", makeFolder(dir / "profile"));
    makeFolder(dir / "profile/Documents");
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "profile/Documents");
    EXPECT_EQ(BaseFolderGet(false, true, true), dir / "profile/Documents")
        << "store and force change nothing";

    EnvGuard::set("TARVELL_DEBUG", "");
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "profile/Documents") << "an empty candidate fails";
    EnvGuard::set("TARVELL_DEBUG", makeFolder(dir / "debug"));
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "debug");
    EXPECT_EQ(WorkFolderGet(false, false, false), dir / "debug/_temp_");
    EXPECT_TRUE(fs::is_directory(dir / "debug/_temp_"));
    EXPECT_EQ(fs::status(dir / "debug/_temp_").permissions() & fs::perms::all, fs::perms::owner_all)
        << "working copies are the user's alone";
    EXPECT_EQ(TempDir::entriesIn(dir / "debug/_temp_"), 0u) << "no test file left behind";
}

// On a German desktop the documents folder is ~/Dokumente: it counts as "Documents".
TEST(Folders, TheDesktopsDocumentsFolderIsTheHomesDocuments) {
    const EnvGuard guard = searchVariables();
    TempDir dir;
    EnvGuard::set("HOME", makeFolder(dir / "home"));
    EnvGuard::set("TEMP", makeFolder(dir / "temp"));
    makeFolder(dir / "home/Dokumente");
    makeFolder(dir / "home/.config");
    {
        std::ofstream(dir / "home/.config/user-dirs.dirs") << "# from xdg-user-dirs-update\n"
                                                              "XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n";
    }
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "home/Dokumente");

    EnvGuard::set("XDG_DOCUMENTS_DIR", makeFolder(dir / "papers"));
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "papers");
    EnvGuard::set("XDG_DOCUMENTS_DIR", dir / "home/"); // the home itself: not set
    makeFolder(dir / "home/Documents");
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "home/Documents");
    EnvGuard::set("USERPROFILE", makeFolder(dir / "profile"));
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "temp") << "a Windows profile has no desktop";
}

TEST(Folders, ReadOnlyDocumentsFolderCountsOnlyForExistence) {
    const EnvGuard guard = searchVariables();
    TempDir dir;
    EnvGuard::set("USERPROFILE", makeFolder(dir / "profile"));
    makeReadOnlyFolder(dir / "profile/Documents");
    EnvGuard::set("TEMP", makeFolder(dir / "temp"));

    EXPECT_EQ(BaseFolderGet(true, false, false), dir / "profile/Documents");
    // The base folder exists but "_temp_" cannot be made in it, so the base folder is the answer.
    if (!TempDir::runningAsRoot()) {
        EXPECT_EQ(WorkFolderGet(true, false, false), dir / "profile/Documents");
    }
    if (TempDir::runningAsRoot()) {
        GTEST_SKIP() << "root writes into read-only folders";
    }
    EXPECT_EQ(BaseFolderGet(false, false, false), dir / "temp");
    EXPECT_EQ(WorkFolderGet(false, false, false), dir / "temp/_temp_");
}

TEST(Folders, WorkFolderReusedOrFallsBackToBase) {
    const EnvGuard guard = searchVariables();
    TempDir dir;
    EnvGuard::set("TARVELL_DEBUG", makeFolder(dir / "debug"));
    makeFolder(dir / "debug/_temp_");
    { std::ofstream(dir / "debug/_temp_/kept.docx") << "form"; }
    EXPECT_EQ(WorkFolderGet(false, false, false), dir / "debug/_temp_");
    EXPECT_EQ(TempDir::entriesIn(dir / "debug/_temp_"), 1u);

    // A file called "_temp_" blocks the folder; the base folder is taken instead.
    EnvGuard::set("TARVELL_DEBUG", makeFolder(dir / "other"));
    { std::ofstream(dir / "other/_temp_") << "x"; }
    EXPECT_EQ(WorkFolderGet(false, false, false), dir / "other");
    EXPECT_EQ(WorkFolderGet(true, false, false), dir / "other");

    // Only one level is created.
    EnvGuard::set("TARVELL_DEBUG", dir / "gone");
    EnvGuard::set("TEMP", makeFolder(dir / "temp"));
    EXPECT_EQ(WorkFolderGet(false, false, false), dir / "temp/_temp_");
    EXPECT_FALSE(fs::exists(dir / "gone"));
}
