#include "support/ProgramData.h"

#include "support/ProgramFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace wordbm;
namespace fs = std::filesystem;

// The test program stands in the build tree: what lies beside it is taken from there, the rest is
// looked for where an installation keeps it, <prefix>/share/wordbm and <prefix>/libexec/wordbm
// seen from <prefix>/bin.
TEST(ProgramData, BesideTheProgramFirstThenWhereTheInstallationKeepsIt) {
    const fs::path folder = ProgramFolder();
    const std::string self = fs::read_symlink("/proc/self/exe").filename().string();
    EXPECT_EQ(ProgramDataPath(self), (folder / self).string());
    EXPECT_EQ(ProgramHelperPath(self), (folder / self).string());

    EXPECT_EQ(ProgramDataPath("img"), (folder.parent_path() / "share/wordbm/img").string());
    EXPECT_EQ(ProgramHelperPath("wordbm-office-worker"),
              (folder.parent_path() / "libexec/wordbm/wordbm-office-worker").string());
}
