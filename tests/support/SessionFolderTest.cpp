#include "support/SessionFolder.h"

#include "kit/EnvGuard.h"
#include "kit/TempDir.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace wordbm;
namespace fs = std::filesystem;

namespace {

// The id of a process that has ended and been reaped.
pid_t endedProcess() {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    return child;
}

std::string host() {
    char buffer[256] = {};
    ::gethostname(buffer, sizeof buffer - 1);
    return buffer;
}

} // namespace

// Each process keeps its working copies in a folder of its own, for the user alone, and the
// folders of processes that died are cleared when the next one makes its own.
TEST(SessionFolder, OneFolderPerProcessAndNoneOfTheDeadOnes) {
    const EnvGuard guard{"TARVELL_DEBUG", "USERPROFILE", "TEMP", "TMP"};
    TempDir dir;
    EnvGuard::set("TARVELL_DEBUG", dir.path().string());
    const std::string dead =
        dir / ("_temp_/wbm-" + host() + "-" + std::to_string(endedProcess()) + "-abc123");
    const std::string alive = dir / ("_temp_/wbm-" + host() + "-1-abc123"); // init never ends
    const std::string elsewhere = dir / "_temp_/wbm-otherhost-999999-abc123";
    const std::string kept = dir / "_temp_/Rechnung.docx";
    for (const std::string& folder : {dead, alive, elsewhere}) {
        fs::create_directories(folder + "/inner");
    }
    { std::ofstream(kept) << "form"; }

    const std::string own = SessionFolder::get();

    EXPECT_EQ(own, dir / ("_temp_/" + SessionFolder::name()));
    EXPECT_EQ(SessionFolder::get(), own);
    EXPECT_EQ(fs::status(own).permissions() & fs::perms::all, fs::perms::owner_all);
    EXPECT_FALSE(fs::exists(dead));
    EXPECT_TRUE(fs::exists(alive));
    EXPECT_TRUE(fs::exists(elsewhere)) << "another host's processes are not ours to judge";
    EXPECT_TRUE(fs::exists(kept));
}

// The folder goes with the process; a child that ends through exit() leaves its parent's alone.
TEST(SessionFolder, GoesWithTheProcess) {
    const EnvGuard guard{"TARVELL_DEBUG", "USERPROFILE", "TEMP", "TMP"};
    TempDir dir;
    EnvGuard::set("TARVELL_DEBUG", dir.path().string());
    int pipe[2];
    ASSERT_EQ(::pipe(pipe), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const std::string folder = SessionFolder::get();
        const pid_t grandchild = ::fork();
        if (grandchild == 0) {
            std::exit(0);
        }
        ::waitpid(grandchild, nullptr, 0);
        const bool stillThere = fs::is_directory(folder);
        (void)!::write(pipe[1], stillThere ? "1" : "0", 1);
        std::exit(0);
    }
    ::close(pipe[1]);
    char stillThere = 0;
    EXPECT_EQ(::read(pipe[0], &stillThere, 1), 1);
    ::close(pipe[0]);
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(stillThere, '1');
    EXPECT_EQ(TempDir::entriesIn(dir.path() / "_temp_"), 0u);
}
