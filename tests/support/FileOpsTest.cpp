#include "support/FileOps.h"

#include "kit/TempDir.h"
#include "support/AtomicFile.h"
#include "support/HiddenTemporary.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>

using namespace wordbm;
namespace fs = std::filesystem;

namespace {

void writeRaw(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string readRaw(const std::string& path) {
    return readFileBytes(path).value_or("<unreadable>");
}

// Writes more than a file-size limit allows; true when that nevertheless reported success.
bool writeUnderSizeLimit(const std::string& target) {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{4096, 4096};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    return writeFileAtomic(target, std::string(100000, 'n')).empty();
}

} // namespace

TEST(FileOps, ReadingTakesBytesAsTheyAre) {
    TempDir dir;
    const std::string binary("a\0\xFF\r\n", 5);
    writeRaw(dir / "bin", binary);
    EXPECT_EQ(readFileBytes(dir / "bin"), binary);
    writeRaw(dir / "empty", "");
    EXPECT_EQ(readFileBytes(dir / "empty"), "");
    writeRaw(dir / "ansi", "\xEF\xBB\xBFZ\xFCrich \x80");
    EXPECT_EQ(readAnsiText(dir / "ansi"), "ï»¿Zürich €");

    EXPECT_FALSE(readFileBytes(dir / "missing"));
    EXPECT_FALSE(readFileBytes(dir.path().string()));
    EXPECT_FALSE(readFileBytes("/dev/zero")) << "a device would be read forever";
    EXPECT_TRUE(fileExists(dir / "bin"));
    EXPECT_FALSE(fileExists(dir.path().string()));
    EXPECT_TRUE(folderExists(dir.path().string()));
    EXPECT_FALSE(folderExists(dir / "bin"));
}

TEST(FileOps, AtomicWriteReplacesTheFileAndLeavesNothingElse) {
    TempDir dir;
    const std::string target = dir / "settings.ini";
    EXPECT_EQ(writeFileAtomic(target, "first"), "");
    EXPECT_EQ(writeAnsiTextAtomic(target, "Grüsse € 日"), "");
    EXPECT_EQ(readRaw(target), "Gr\xFCsse \x80 ?");
    EXPECT_EQ(TempDir::entriesIn(dir.path()), 1u);

    fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(writeFileAtomic(target, "private"), "");
    EXPECT_EQ(fs::status(target).permissions(), fs::perms::owner_read | fs::perms::owner_write);

    // Written through a link, the link stays and the file it names gets the content.
    fs::create_symlink(target, dir / "link.ini");
    EXPECT_EQ(writeFileAtomic(dir / "link.ini", "linked"), "");
    EXPECT_TRUE(fs::is_symlink(dir / "link.ini"));
    EXPECT_EQ(readRaw(target), "linked");
}

TEST(FileOps, FailedAtomicWriteKeepsTheOldContent) {
    TempDir dir;
    fs::create_directory(dir / "folder");
    EXPECT_EQ(writeFileAtomic(dir / "folder", "x"), "Kann Datei nicht schreiben!\r\n" + (dir / "folder") +
                                                        "\r\n" + "Das ist ein Ordner, keine Datei");
    EXPECT_EQ(writeFileAtomic(dir / "missing/file", "x"), "Kann Datei nicht schreiben!\r\n" +
                                                              (dir / "missing/file") + "\r\n" +
                                                              "Datei oder Ordner nicht gefunden");
    EXPECT_EQ(TempDir::entriesIn(dir.path()), 1u);

    const std::string target = dir / "data.csv";
    writeRaw(target, "old");
    // A file-size limit makes the write itself fail; in a child process, so the limit stays there.
    EXPECT_EXIT(std::_Exit(writeUnderSizeLimit(target) ? 1 : 0), ::testing::ExitedWithCode(0), "");
    EXPECT_EQ(readRaw(target), "old");
    EXPECT_EQ(TempDir::entriesIn(dir.path()), 2u) << "the temporary file is removed";

    fs::permissions(dir.path(), fs::perms::owner_read | fs::perms::owner_exec);
    if (TempDir::runningAsRoot()) {
        GTEST_SKIP() << "root writes into read-only folders";
    }
    EXPECT_EQ(writeFileAtomic(target, "new"),
              "Kann Datei nicht schreiben!\r\n" + target + "\r\n" + "Zugriff verweigert");
    EXPECT_EQ(readRaw(target), "old");
}

TEST(FileOps, CopyAndItsErrorText) {
    TempDir dir;
    std::string big;
    for (int i = 0; i < 300000; ++i) {
        big += static_cast<char>(i * 7);
    }
    writeRaw(dir / "source", big);
    EXPECT_EQ(FileCopy(dir / "source", dir / "target"), "");
    EXPECT_EQ(readRaw(dir / "target"), big);
    EXPECT_EQ(FileCopy(dir / "source", dir / "source"), "");
    EXPECT_EQ(readRaw(dir / "source"), big);

    EXPECT_EQ(FileCopy(dir / "nothing", dir / "target"),
              "Kann Datei nicht kopieren!\r\n" + (dir / "nothing") + "\r\nnach\r\n" + (dir / "target") +
                  "\r\n" + "Datei oder Ordner nicht gefunden");
    EXPECT_EQ(FileCopy(dir / "source", dir / "no/target"),
              "Kann Datei nicht kopieren!\r\n" + (dir / "source") + "\r\nnach\r\n" + (dir / "no/target") +
                  "\r\n" + "Datei oder Ordner nicht gefunden");
    EXPECT_EQ(readRaw(dir / "target"), big);
    EXPECT_EQ(TempDir::entriesIn(dir.path()), 2u);
}

TEST(FileOps, OpenCheckTellsMissingFromUnreadable) {
    TempDir dir;
    EXPECT_EQ(FileOpenCheck(dir / "missing.csv"), "Datei nicht gefunden!\r\n" + (dir / "missing.csv"));
    EXPECT_EQ(FileOpenCheck(dir.path().string()), "Datei nicht gefunden!\r\n" + dir.path().string());
    writeRaw(dir / "ok.csv", "a;b");
    EXPECT_EQ(FileOpenCheck(dir / "ok.csv"), "");

    fs::permissions(dir / "ok.csv", fs::perms::none);
    if (TempDir::runningAsRoot()) {
        GTEST_SKIP() << "root reads files without permission";
    }
    EXPECT_EQ(FileOpenCheck(dir / "ok.csv"),
              "Kann Datei nicht öffnen!\r\n" + (dir / "ok.csv") + "\r\n" + "Zugriff verweigert");
}

// A writer killed before it renames leaves its hidden temporary file; the next run writing into
// that folder removes it, but never a file of a running process, of another host, or the user's.
TEST(FileOps, KilledWritersLeftoversGoWithTheNextWrite) {
    TempDir dir;
    const pid_t writer = ::fork();
    if (writer == 0) {
        AtomicFile file(dir / "Rechnung.pdf");
        if (!file.open() && !file.write("half a file")) {
            ::kill(::getpid(), SIGKILL);
        }
        std::_Exit(1);
    }
    int status = 0;
    ::waitpid(writer, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    std::vector<std::string> left;
    for (const auto& entry : fs::directory_iterator(dir.path())) {
        left.push_back(entry.path().filename().string());
    }
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(HiddenTemporary::processOf(left.front()), writer);
    char host[256] = {};
    ::gethostname(host, sizeof host - 1);
    const std::vector<std::string> kept{".wbm-" + std::string(host) + "-1-7.tmp",
                                        ".wbm-otherhost-" + std::to_string(writer) + "-1.tmp",
                                        ".wbm-notes.tmp", "lu12345.tmp"};
    for (const auto& name : kept) {
        writeRaw(dir / name, "x");
    }

    EXPECT_EQ(writeFileAtomic(dir / "Rechnung.docx", "invoice"), "");

    EXPECT_FALSE(fs::exists(dir / left.front()));
    for (const auto& name : kept) {
        EXPECT_TRUE(fs::exists(dir / name)) << name;
    }
    EXPECT_EQ(TempDir::entriesIn(dir.path()), kept.size() + 1);
}
