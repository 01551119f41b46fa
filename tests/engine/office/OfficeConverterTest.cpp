// PDF export through the pool of LibreOffice workers: the text and the PDF/A marks of what comes
// out, the errors a user sees, and how the pool lives through killed, hung and worn workers.
#include "engine/office/OfficeConverter.h"

#include "ExternalProgram.h"
#include "TestFolder.h"
#include "engine/AutomationError.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>
#include <sstream>
#include <thread>

using testing::HasSubstr;
using testing::StartsWith;
using wordbm::AutomationError;
using wordbm::office::OfficeConverter;
using namespace std::chrono_literals;

namespace {

const char* const GermanText = "German text.docx";
const char* const Letterhead = "Letterhead.docx";

// Every paragraph of German text.docx, one line each in pdftotext's reading.
bool hasGermanTextContent(const std::string& text) {
    return text.find("This document contains German text.") != std::string::npos &&
           text.find("Sonderling") != std::string::npos && text.find("bezahlen aus.") != std::string::npos;
}

struct FontRow {
    std::string name;
    bool embedded = false;
};

// pdffonts prints two header lines, then name, type, encoding, emb, sub, uni, object, id.
// Names never hold blanks; types may ("Type 1C"), so emb is read from the right.
std::vector<FontRow> fontsOf(const std::string& pdfPath) {
    std::istringstream lines(runProgram({"pdffonts", pdfPath}).standardOutput);
    std::vector<FontRow> fonts;
    std::string line;
    for (int header = 0; header < 2 && std::getline(lines, line); ++header) {
    }
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::vector<std::string> parts;
        for (std::string word; words >> word;) {
            parts.push_back(word);
        }
        if (parts.size() >= 7) {
            fonts.push_back({parts.front(), parts[parts.size() - 5] == "yes"});
        }
    }
    return fonts;
}

std::string xmpOf(const std::string& pdfPath) {
    return runProgram({"pdfinfo", "-meta", pdfPath}).standardOutput;
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

    OfficeConverter& converter = OfficeConverter::shared();
    const int savedPoolSize = converter.poolSize();
    TestFolder folder;
};

class PdfExport : public OfficeConverterTest {};
class PdfAExport : public OfficeConverterTest {};
class PdfExportErrors : public OfficeConverterTest {};
class WorkerPool : public OfficeConverterTest {};

} // namespace

TEST_F(PdfExport, TheDocumentsTextReachesThePdf) {
    // Blanks, "#", "%" and umlauts must survive the way to LibreOffice as a URL.
    const auto document = folder.copyCorpusDocument(GermanText, "Rechnung Müller #7 (100%).docx");
    const auto pdf = folder / "Rechnung Müller #7 (100%).pdf";
    converter.toPdf(document, pdf, false);
    EXPECT_TRUE(hasGermanTextContent(pdfText(pdf))) << pdfText(pdf);
}

TEST_F(PdfExport, LeavesOnlyTheFinishedPdfBehind) {
    const auto document = folder.copyCorpusDocument(Letterhead, "form.docx");
    folder.write("form.pdf", "an older export");
    converter.toPdf(document, folder / "form.pdf", false);
    EXPECT_THAT(readBytes(folder / "form.pdf"), StartsWith("%PDF-"));
    EXPECT_THAT(pdfText(folder / "form.pdf"), HasSubstr("Company Name"));
    EXPECT_EQ(folder.entries(), (std::vector<std::string>{"form.docx", "form.pdf"}));
}

TEST_F(PdfExport, AMacroDocumentConvertsToo) {
    const auto document = folder.copyCorpusDocument("SimpleMacro.docm", "form.docm");
    converter.toPdf(document, folder / "form.pdf", false);
    EXPECT_THAT(pdfText(folder / "form.pdf"), HasSubstr("This is a macro word processing document"));
}

TEST_F(PdfExport, APlainPdfIsNoPdfA) {
    const auto document = folder.copyCorpusDocument(GermanText, "plain.docx");
    converter.toPdf(document, folder / "plain.pdf", false);
    EXPECT_THAT(xmpOf(folder / "plain.pdf"), testing::Not(HasSubstr("pdfaid:part")));
}

TEST_F(PdfAExport, CarriesPartOneInItsXmpAndEmbedsEveryFont) {
    for (const char* name : {GermanText, Letterhead}) {
        const auto document = folder.copyCorpusDocument(name, "archive.docx");
        converter.toPdf(document, folder / "archive.pdf", true);
        EXPECT_THAT(xmpOf(folder / "archive.pdf"), HasSubstr("<pdfaid:part>1</pdfaid:part>")) << name;
        const auto fonts = fontsOf(folder / "archive.pdf");
        ASSERT_FALSE(fonts.empty()) << name;
        for (const auto& font : fonts) {
            EXPECT_TRUE(font.embedded) << name << ": " << font.name;
        }
    }
}

TEST_F(PdfAExport, KeepsTheText) {
    const auto document = folder.copyCorpusDocument(GermanText, "archive.docx");
    converter.toPdf(document, folder / "archive.pdf", true);
    EXPECT_TRUE(hasGermanTextContent(pdfText(folder / "archive.pdf")));
}

TEST_F(PdfExportErrors, AMissingDocumentIsNamed) {
    const auto missing = folder / "gone.docx";
    EXPECT_EQ(messageOf([&] { converter.toPdf(missing, folder / "gone.pdf", false); }),
              "Datei nicht gefunden!\r\n" + missing);
    EXPECT_TRUE(folder.entries().empty());
}

TEST_F(PdfExportErrors, TextUnderADocxNameIsRefused) {
    const auto fake = folder.write("notes.docx", "just some text, not a package");
    EXPECT_EQ(messageOf([&] { converter.toPdf(fake, folder / "notes.pdf", false); }),
              "Kein Word-Dokument (.docx/.docm)!\r\n" + fake);
}

TEST_F(PdfExportErrors, ADamagedPackageKeepsTheOldPdfAndTheWorker) {
    const auto good = folder.copyCorpusDocument(Letterhead, "good.docx");
    const std::string bytes = readBytes(good);
    const auto damaged = folder.write("damaged.docx", bytes.substr(0, bytes.size() / 2));
    folder.write("damaged.pdf", "the export of yesterday");
    converter.setPoolSize(1);
    converter.toPdf(good, folder / "good.pdf", false);
    const auto workers = converter.idleWorkerPids();

    EXPECT_EQ(messageOf([&] { converter.toPdf(damaged, folder / "damaged.pdf", false); }),
              "LibreOffice kann das Dokument nicht öffnen!\r\n" + damaged);
    EXPECT_EQ(readBytes(folder / "damaged.pdf"), "the export of yesterday");
    EXPECT_EQ(folder.entries(),
              (std::vector<std::string>{"damaged.docx", "damaged.pdf", "good.docx", "good.pdf"}));
    EXPECT_EQ(converter.idleWorkerPids(), workers);
}

TEST_F(PdfExportErrors, AMissingTargetFolderIsNamed) {
    const auto document = folder.copyCorpusDocument(GermanText, "a.docx");
    EXPECT_EQ(messageOf([&] { converter.toPdf(document, folder / "no/such/a.pdf", false); }),
              "Ordner nicht gefunden!\r\n" + folder / "no/such");
}

TEST_F(PdfExportErrors, AMissingWorkerProgramIsReported) {
    const char* saved = std::getenv("WORDBM_OFFICE_WORKER");
    const std::string previous = saved != nullptr ? saved : "";
    ::setenv("WORDBM_OFFICE_WORKER", (folder / "no-such-worker").c_str(), 1);
    OfficeConverter own;
    const auto document = folder.copyCorpusDocument(GermanText, "a.docx");
    const auto message = messageOf([&] { own.toPdf(document, folder / "a.pdf", false); });
    saved != nullptr ? ::setenv("WORDBM_OFFICE_WORKER", previous.c_str(), 1)
                     : ::unsetenv("WORDBM_OFFICE_WORKER");
    EXPECT_THAT(message, StartsWith("LibreOffice kann nicht gestartet werden: "));
    EXPECT_THAT(message, HasSubstr("no-such-worker"));
}

TEST_F(WorkerPool, AWorkerKilledBetweenDocumentsIsReplaced) {
    const auto document = folder.copyCorpusDocument(GermanText, "a.docx");
    converter.setPoolSize(1);
    converter.toPdf(document, folder / "first.pdf", false);
    const auto before = converter.idleWorkerPids();
    ASSERT_EQ(before.size(), 1u);
    ::kill(before.front(), SIGKILL);

    converter.toPdf(document, folder / "second.pdf", false);
    EXPECT_TRUE(hasGermanTextContent(pdfText(folder / "second.pdf")));
    const auto after = converter.idleWorkerPids();
    ASSERT_EQ(after.size(), 1u);
    EXPECT_NE(after.front(), before.front());
}

TEST_F(WorkerPool, AHungConversionKillsItsWorkerAndTheNextOneWorks) {
    const auto document = folder.copyCorpusDocument(GermanText, "a.docx");
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
    EXPECT_EQ(folder.entries(), (std::vector<std::string>{"a.docx", "warm.pdf"})) << "half a PDF was left";

    converter.setTimeout(120s);
    converter.toPdf(document, folder / "again.pdf", false);
    EXPECT_TRUE(hasGermanTextContent(pdfText(folder / "again.pdf")));
}

TEST_F(WorkerPool, AWorkerIsReplacedAfterItsShareOfDocuments) {
    const auto document = folder.copyCorpusDocument(GermanText, "a.docx");
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
    EXPECT_TRUE(hasGermanTextContent(pdfText(folder / "3.pdf")));
}

TEST_F(WorkerPool, TwoThreadsConvertAtTheSameTime) {
    converter.setPoolSize(2);
    std::mutex mutex;
    std::vector<std::string> failures;
    auto convertThree = [&](const std::string& prefix) {
        for (int i = 0; i < 3; ++i) {
            const auto name = prefix + std::to_string(i);
            try {
                const auto document = folder.copyCorpusDocument(GermanText, name + ".docx");
                converter.toPdf(document, folder / (name + ".pdf"), i == 1);
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
    EXPECT_TRUE(failures.empty()) << testing::PrintToString(failures);
    for (const char* prefix : {"left", "right"}) {
        for (int i = 0; i < 3; ++i) {
            const auto pdf = folder / (prefix + std::to_string(i) + ".pdf");
            EXPECT_TRUE(hasGermanTextContent(pdfText(pdf))) << pdf;
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
