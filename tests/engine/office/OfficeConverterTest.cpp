// PDF export through the pool of LibreOffice workers: the text and the PDF/A marks of what comes
// out, the errors a user sees, and how the pool lives through killed, hung and worn workers.
#include "engine/office/OfficeConverter.h"

#include "ExternalProgram.h"
#include "engine/word/AutomationError.h"
#include "kit/EnvGuard.h"
#include "kit/TempDir.h"
#include "support/FileOps.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <mutex>
#include <sstream>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using testing::HasSubstr;
using testing::StartsWith;
using wordbm::AutomationError;
using wordbm::office::OfficeConverter;
using namespace std::chrono_literals;
using Names = std::vector<std::string>;

namespace {

const char* const GermanText = "German text.docx";
const char* const Letterhead = "Letterhead.docx";

// Paragraphs from the start, middle and end of German text.docx, as pdftotext reads them.
bool hasGermanText(const std::string& pdf) {
    const std::string text = pdfText(pdf);
    return text.find("This document contains German text.") != std::string::npos &&
           text.find("Sonderling") != std::string::npos && text.find("bezahlen aus.") != std::string::npos;
}

// pdffonts: two header lines, then one font a line with "emb" fifth from the right (a type may
// hold a blank, "Type 1C"). Returns the fonts that are not embedded, or "none found".
std::string fontsNotEmbedded(const std::string& pdf) {
    std::istringstream lines(runProgram({"pdffonts", pdf}).standardOutput);
    std::string line, missing = "none found";
    for (int row = 0; std::getline(lines, line); ++row) {
        std::istringstream words(line);
        const std::vector<std::string> parts{std::istream_iterator<std::string>(words), {}};
        if (row >= 2 && parts.size() >= 7) {
            missing = missing == "none found" ? "" : missing;
            missing += parts[parts.size() - 5] == "yes" ? "" : parts.front() + " ";
        }
    }
    return missing;
}

std::string xmpOf(const std::string& pdf) {
    return runProgram({"pdfinfo", "-meta", pdf}).standardOutput;
}

std::string messageOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const AutomationError& e) {
        return e.Description();
    }
    return "(no AutomationError)";
}

class OfficeConverterTest : public testing::Test {
protected:
    void TearDown() override {
        converter.setTimeout(120s);
        converter.setDocumentsPerWorker(300);
        converter.setPoolSize(savedPoolSize);
    }

    std::string copyCorpus(const std::string& corpusName, const std::string& newName) const {
        const auto target = folder.path() / newName;
        std::filesystem::copy_file(std::filesystem::path(WORDBM_CORPUS_DIR) / "docx" / corpusName, target);
        std::filesystem::permissions(target, std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add);
        return target.string();
    }
    std::string write(const std::string& name, const std::string& bytes) const {
        wordbm::writeFileAtomic(folder / name, bytes);
        return folder / name;
    }
    std::string read(const std::string& name) const {
        return wordbm::readFileBytes(folder / name).value_or("");
    }
    Names entries() const {
        Names names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    OfficeConverter& converter = OfficeConverter::shared();
    const int savedPoolSize = converter.poolSize();
    TempDir folder;
};

class PdfExport : public OfficeConverterTest {};
class PdfExportErrors : public OfficeConverterTest {};
class WorkerPool : public OfficeConverterTest {};

} // namespace

TEST_F(PdfExport, TheDocumentsTextReachesAPlainPdf) {
    // Blanks, "#", "%" and umlauts must survive the way to LibreOffice as a URL.
    const auto document = copyCorpus(GermanText, "Rechnung Müller #7 (100%).docx");
    const auto pdf = folder / "Rechnung Müller #7 (100%).pdf";
    converter.toPdf(document, pdf, false);
    EXPECT_TRUE(hasGermanText(pdf)) << pdfText(pdf);
    EXPECT_THAT(xmpOf(pdf), testing::Not(HasSubstr("pdfaid:part")));
}

TEST_F(PdfExport, PdfACarriesPartOneInItsXmpEmbedsEveryFontAndKeepsTheText) {
    for (const char* name : {Letterhead, GermanText}) {
        const auto document = copyCorpus(name, name);
        const auto pdf = folder / (std::string(name) + ".pdf");
        converter.toPdf(document, pdf, true);
        EXPECT_THAT(xmpOf(pdf), HasSubstr("<pdfaid:part>1</pdfaid:part>")) << name;
        EXPECT_EQ(fontsNotEmbedded(pdf), "") << name;
    }
    EXPECT_TRUE(hasGermanText(folder / "German text.docx.pdf"));
}

// Every name that shows up in a folder (made there or moved in) while a watch lasts.
class FolderWatch {
public:
    explicit FolderWatch(const std::string& folder) : fd_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        ::inotify_add_watch(fd_, folder.c_str(), IN_CREATE | IN_MOVED_TO);
    }
    ~FolderWatch() { ::close(fd_); }
    Names seen() {
        Names names;
        alignas(inotify_event) char buffer[16384];
        for (ssize_t got; (got = ::read(fd_, buffer, sizeof buffer)) > 0;) {
            for (char* at = buffer; at < buffer + got;) {
                const auto* event = reinterpret_cast<const inotify_event*>(at);
                names.emplace_back(event->len > 0 ? event->name : "");
                at += sizeof(inotify_event) + event->len;
            }
        }
        return names;
    }

private:
    int fd_;
};

// A killed run cannot leave what never was in the folder: LibreOffice writes elsewhere, and only
// the finished PDF moves in.
TEST_F(PdfExport, ReplacesAnOlderPdfAndNothingElseEverShowsInTheFolder) {
    const auto document = copyCorpus(Letterhead, "form.docx");
    write("form.pdf", "an older export");
    FolderWatch watch(folder.path().string());
    converter.toPdf(document, folder / "form.pdf", false);
    EXPECT_EQ(watch.seen(), Names{"form.pdf"});
    EXPECT_THAT(pdfText(folder / "form.pdf"), HasSubstr("Company Name"));
    EXPECT_EQ(entries(), (Names{"form.docx", "form.pdf"}));
}

TEST_F(PdfExport, AMacroDocumentConvertsToo) {
    const auto document = copyCorpus("SimpleMacro.docm", "form.docm");
    converter.toPdf(document, folder / "form.pdf", false);
    EXPECT_THAT(pdfText(folder / "form.pdf"), HasSubstr("This is a macro word processing document"));
}

TEST_F(PdfExportErrors, MissingFilesAndFoldersAreNamed) {
    const auto missing = folder / "gone.docx";
    EXPECT_EQ(messageOf([&] { converter.toPdf(missing, folder / "gone.pdf", false); }),
              "Datei nicht gefunden!\r\n" + missing);
    const auto document = copyCorpus(GermanText, "a.docx");
    EXPECT_EQ(messageOf([&] { converter.toPdf(document, folder / "no/such/a.pdf", false); }),
              "Ordner nicht gefunden!\r\n" + folder / "no/such");
    EXPECT_EQ(entries(), Names{"a.docx"});
}

TEST_F(PdfExportErrors, TextUnderADocxNameIsRefused) {
    const auto fake = write("notes.docx", "just some text, not a package");
    EXPECT_EQ(messageOf([&] { converter.toPdf(fake, folder / "notes.pdf", false); }),
              "Kein Word-Dokument (.docx/.docm)!\r\n" + fake);
}

TEST_F(PdfExportErrors, ADamagedPackageKeepsTheOldPdfAndTheWorker) {
    const auto good = copyCorpus(Letterhead, "good.docx");
    const std::string bytes = read("good.docx");
    const auto damaged = write("damaged.docx", bytes.substr(0, bytes.size() / 2));
    write("damaged.pdf", "the export of yesterday");
    converter.setPoolSize(1);
    converter.toPdf(good, folder / "good.pdf", false);
    const auto workers = converter.idleWorkerPids();

    EXPECT_EQ(messageOf([&] { converter.toPdf(damaged, folder / "damaged.pdf", false); }),
              "LibreOffice kann das Dokument nicht öffnen!\r\n" + damaged);
    EXPECT_EQ(read("damaged.pdf"), "the export of yesterday");
    EXPECT_EQ(entries(), (Names{"damaged.docx", "damaged.pdf", "good.docx", "good.pdf"}));
    EXPECT_EQ(converter.idleWorkerPids(), workers);
}

// A client killed with its workers leaves their folders (profile, TMPDIR); the next client
// removes those of clients that have ended, and no other folder.
TEST_F(WorkerPool, FoldersOfKilledClientsGoWhenTheNextWorkerStarts) {
    EnvGuard environment{"TMPDIR"};
    EnvGuard::set("TMPDIR", folder / "tmp");
    const pid_t ended = ::fork();
    if (ended == 0) {
        ::_exit(0);
    }
    ::waitpid(ended, nullptr, 0);
    const auto stale = folder / ("tmp/wordbm-office-" + std::to_string(ended) + "-a1b2c3");
    const Names kept{"wordbm-office-1-a1b2c3", "wordbm-office-notes", "wordbm-a1b2c3"};
    std::filesystem::create_directories(stale + "/profile/user");
    for (const auto& name : kept) {
        std::filesystem::create_directories(folder / ("tmp/" + name));
    }
    {
        OfficeConverter own;
        own.setPoolSize(1);
        own.warmUp();
        EXPECT_FALSE(std::filesystem::exists(stale));
        for (const auto& name : kept) {
            EXPECT_TRUE(std::filesystem::exists(folder / ("tmp/" + name))) << name;
        }
    }
    EXPECT_EQ(TempDir::entriesIn(folder / "tmp"), kept.size()) << "the worker's own folder goes with it";
}

TEST_F(PdfExportErrors, AMissingWorkerProgramIsReported) {
    EnvGuard environment{"WORDBM_OFFICE_WORKER"};
    EnvGuard::set("WORDBM_OFFICE_WORKER", folder / "no-such-worker");
    OfficeConverter own;
    const auto document = copyCorpus(GermanText, "a.docx");
    const auto message = messageOf([&] { own.toPdf(document, folder / "a.pdf", false); });
    EXPECT_THAT(message, StartsWith("LibreOffice kann nicht gestartet werden: "));
    EXPECT_THAT(message, HasSubstr("no-such-worker"));
}

// A worker that ends while it starts is started once more; when that ends too, the message says
// how it ended and what it printed last.
TEST_F(PdfExportErrors, AWorkerEndingAtStartIsTriedAgainAndItsEndIsReported) {
    EnvGuard environment{"WORDBM_OFFICE_WORKER", "WORDBM_OFFICE_LOG"};
    const std::string starts = folder / "starts";
    const std::string worker = folder / "ending-worker";
    wordbm::writeFileAtomic(worker, "#!/bin/sh\necho start >> '" + starts +
                                        "'\necho 'Profil wird angelegt' >&2\necho \"Start $(wc -l < '" +
                                        starts + "') misslungen\" >&2\nexit 81\n");
    std::filesystem::permissions(worker, std::filesystem::perms::owner_all);
    EnvGuard::set("WORDBM_OFFICE_WORKER", worker);
    OfficeConverter own;
    const auto document = copyCorpus(GermanText, "a.docx");
    const auto message = messageOf([&] { own.toPdf(document, folder / "a.pdf", false); });
    EXPECT_THAT(message,
                StartsWith("LibreOffice kann nicht gestartet werden: das Hilfsprogramm wurde beendet "
                           "(Exit-Status 81).\r\nProfil wird angelegt\r\nStart 2 misslungen"));
    EXPECT_EQ(wordbm::readFileBytes(starts), "start\nstart\n");
}

TEST_F(WorkerPool, AWorkerKilledBetweenDocumentsIsReplaced) {
    const auto document = copyCorpus(GermanText, "a.docx");
    converter.setPoolSize(1);
    converter.toPdf(document, folder / "first.pdf", false);
    const auto before = converter.idleWorkerPids();
    ASSERT_EQ(before.size(), 1u);
    ::kill(before.front(), SIGKILL);

    converter.toPdf(document, folder / "second.pdf", false);
    EXPECT_TRUE(hasGermanText(folder / "second.pdf"));
    const auto after = converter.idleWorkerPids();
    ASSERT_EQ(after.size(), 1u);
    EXPECT_NE(after.front(), before.front());
}

TEST_F(WorkerPool, AHungConversionKillsItsWorkerAndTheNextOneWorks) {
    const auto document = copyCorpus(GermanText, "a.docx");
    converter.setPoolSize(1);
    converter.toPdf(document, folder / "warm.pdf", false);
    const auto warm = converter.idleWorkerPids();
    ASSERT_EQ(warm.size(), 1u);

    // No conversion answers within a millisecond: to the client that is a hung LibreOffice.
    converter.setTimeout(1ms);
    EXPECT_THAT(messageOf([&] { converter.toPdf(document, folder / "late.pdf", false); }),
                StartsWith("LibreOffice antwortet nicht (Zeitüberschreitung"));
    EXPECT_TRUE(converter.idleWorkerPids().empty());
    EXPECT_EQ(::kill(warm.front(), 0), -1) << "the hung worker still runs";
    // Neither half a PDF nor a lock file of the killed office stays beside the form.
    EXPECT_EQ(entries(), (Names{"a.docx", "warm.pdf"}));

    converter.setTimeout(120s);
    converter.toPdf(document, folder / "again.pdf", false);
    EXPECT_TRUE(hasGermanText(folder / "again.pdf"));
}

TEST_F(WorkerPool, AWorkerIsReplacedAfterItsShareOfDocuments) {
    const auto document = copyCorpus(GermanText, "a.docx");
    converter.setPoolSize(1);
    converter.stopIdleWorkers(); // a worker of an earlier test has its own count
    converter.setDocumentsPerWorker(2);
    converter.toPdf(document, folder / "1.pdf", false);
    const auto first = converter.idleWorkerPids();
    ASSERT_EQ(first.size(), 1u);
    converter.toPdf(document, folder / "2.pdf", false);
    EXPECT_TRUE(converter.idleWorkerPids().empty()) << "a worn worker went back into the pool";
    converter.toPdf(document, folder / "3.pdf", false);
    const auto fresh = converter.idleWorkerPids();
    ASSERT_EQ(fresh.size(), 1u);
    EXPECT_NE(fresh.front(), first.front());
    EXPECT_TRUE(hasGermanText(folder / "3.pdf"));
}

TEST_F(WorkerPool, TwoThreadsConvertAtTheSameTime) {
    converter.setPoolSize(2);
    std::mutex mutex;
    Names failures;
    auto convertThree = [&](const std::string& prefix) {
        for (int i = 0; i < 3; ++i) {
            const auto name = prefix + std::to_string(i);
            try {
                converter.toPdf(copyCorpus(GermanText, name + ".docx"), folder / (name + ".pdf"), i == 1);
            } catch (const std::exception& e) {
                const std::lock_guard lock(mutex);
                failures.push_back(name + ": " + e.what());
            }
        }
    };
    {
        std::jthread left(convertThree, "left");
        std::jthread right(convertThree, "right");
    }
    EXPECT_EQ(failures, Names{});
    for (const char* prefix : {"left", "right"}) {
        for (int i = 0; i < 3; ++i) {
            EXPECT_TRUE(hasGermanText(folder / (prefix + std::to_string(i) + ".pdf"))) << prefix << i;
        }
    }
    EXPECT_LE(converter.idleWorkerPids().size(), 2u);
}

TEST_F(WorkerPool, WarmUpStartsThePoolAndShrinkingStopsTheSurplus) {
    OfficeConverter own;
    own.setPoolSize(2);
    own.warmUp();
    const auto started = own.idleWorkerPids();
    ASSERT_EQ(started.size(), 2u);
    own.setPoolSize(1);
    EXPECT_EQ(own.idleWorkerPids().size(), 1u);
    own.stopIdleWorkers();
    EXPECT_TRUE(own.idleWorkerPids().empty());
    for (const pid_t pid : started) {
        EXPECT_EQ(::kill(pid, 0), -1) << pid << " still runs";
    }
}
