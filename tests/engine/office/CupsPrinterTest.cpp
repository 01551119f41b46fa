// Printing through CUPS: the German errors a user sees, and real jobs on a cups-pdf queue of a
// private cupsd, found again as PDFs in its output folder.
#include "engine/office/CupsPrinter.h"

#include "ExternalProgram.h"
#include "PrivateCupsd.h"
#include "engine/word/AutomationError.h"
#include "kit/EnvGuard.h"
#include "kit/TempDir.h"
#include "support/FileOps.h"

#include <exception>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

using testing::HasSubstr;
using testing::StartsWith;
using wordbm::AutomationError;
using wordbm::office::CupsPrinter;

namespace {

// A one-page PDF with one line of Helvetica, the cross-reference offsets counted as it is built.
std::string onePagePdf(const std::string& line) {
    const std::string stream = "BT /F1 24 Tf 72 700 Td (" + line + ") Tj ET";
    const std::vector<std::string> objects{
        "<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R "
        "/Resources << /Font << /F1 5 0 R >> >> >>",
        "<< /Length " + std::to_string(stream.size()) + " >>\nstream\n" + stream + "\nendstream",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"};
    std::string pdf = "%PDF-1.4\n";
    std::vector<std::size_t> offsets;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        offsets.push_back(pdf.size());
        pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::size_t xref = pdf.size();
    pdf += "xref\n0 " + std::to_string(objects.size() + 1) + "\n0000000000 65535 f \n";
    for (const std::size_t offset : offsets) {
        const std::string number = std::to_string(offset);
        pdf += std::string(10 - number.size(), '0') + number + " 00000 n \n";
    }
    pdf += "trailer\n<< /Size " + std::to_string(objects.size() + 1) + " /Root 1 0 R >>\nstartxref\n" +
           std::to_string(xref) + "\n%%EOF\n";
    return pdf;
}

// The CUPS client keeps its server, settings and connection per thread, read on first use; a new
// thread sees the environment that the test has just set.
std::string printMessage(const std::function<void()>& print) {
    std::string message = "(no AutomationError)";
    std::jthread([&] {
        try {
            print();
        } catch (const AutomationError& e) {
            message = e.Description();
        }
    }).join();
    return message;
}

// Clears every client setting that could lead to a printer outside the test.
class CupsClientTest : public testing::Test {
protected:
    EnvGuard environment{"CUPS_SERVER", "CUPS_SERVERROOT", "HOME", "PRINTER", "LPDEST", "WORDBM_PRINTER"};
    TempDir folder;
    const std::string pdf = folder / "invoice.pdf";
    void SetUp() override { wordbm::writeFileAtomic(pdf, onePagePdf("Rechnung 4711")); }
};

class CupsPrinterErrors : public CupsClientTest {};

class CupsPrinting : public CupsClientTest {
protected:
    void SetUp() override {
        CupsClientTest::SetUp();
        if (!cupsd.unavailable().empty()) {
            GTEST_SKIP() << "no private cupsd in this environment: " << cupsd.unavailable();
        }
        ASSERT_EQ(cupsd.setupError(), "");
        EnvGuard::set("CUPS_SERVER", cupsd.socketPath());
        // Nobody's lpoptions or client.conf may bring in a default printer.
        EnvGuard::set("CUPS_SERVERROOT", cupsd.clientFolder().string());
        EnvGuard::set("HOME", cupsd.clientFolder().string());
    }

    std::string printedPdf() const { return cupsd.waitForPrintedPdf(std::chrono::seconds(90)); }

    PrivateCupsd cupsd;
};

} // namespace

TEST_F(CupsPrinterErrors, AMissingPdfIsNamed) {
    const auto missing = folder / "gone.pdf";
    EXPECT_EQ(printMessage([&] { CupsPrinter::print(missing, "any"); }),
              "Datei nicht gefunden!\r\n" + missing);
}

TEST_F(CupsPrinterErrors, AServerThatIsNotThereIsSaid) {
    EnvGuard::set("CUPS_SERVER", folder / "nobody.sock");
    EXPECT_THAT(printMessage([&] { CupsPrinter::print(pdf, "office"); }),
                StartsWith("Der Druckdienst (CUPS) ist nicht erreichbar"));
    EXPECT_THAT(printMessage([&] { CupsPrinter::print(pdf); }),
                StartsWith("Der Druckdienst (CUPS) ist nicht erreichbar"));
}

TEST_F(CupsPrinting, WithoutADefaultThereIsNoPrinter) {
    EXPECT_EQ(printMessage([&] { CupsPrinter::print(pdf); }), "Kein Drucker eingerichtet.");
}

TEST_F(CupsPrinting, AnUnknownQueueIsNamed) {
    EXPECT_EQ(printMessage([&] { CupsPrinter::print(pdf, "Buchhaltung-3"); }),
              "Drucker nicht gefunden: Buchhaltung-3");
}

TEST_F(CupsPrinting, PrintsOnTheNamedQueue) {
    EXPECT_EQ(printMessage([&] { CupsPrinter::print(pdf, cupsd.queue(), "Rechnung 4711"); }),
              "(no AutomationError)");
    const auto printed = printedPdf();
    ASSERT_FALSE(printed.empty()) << "cups-pdf wrote nothing" << cupsd.errorLogTail();
    // cups-pdf names its file after the job title.
    EXPECT_THAT(std::filesystem::path(printed).filename().string(), StartsWith("Rechnung_4711"));
    EXPECT_THAT(runProgram({"pdfinfo", printed}).standardOutput, testing::ContainsRegex("Pages: +1\n"));
    EXPECT_THAT(pdfText(printed), HasSubstr("Rechnung 4711"));
    // cups-pdf found its settings in the private cupsd's own /etc/cups, not in the system's.
    for (const auto& entry : std::filesystem::directory_iterator("/etc/cups")) {
        EXPECT_THAT(entry.path().filename().string(), testing::Not(StartsWith("cups-pdf-wordbm")));
    }
}

TEST_F(CupsPrinting, PrintsOnTheDefaultDestination) {
    ASSERT_TRUE(cupsd.makeQueueDefault());
    EXPECT_EQ(printMessage([&] { CupsPrinter::print(pdf); }), "(no AutomationError)");
    const auto printed = printedPdf();
    ASSERT_FALSE(printed.empty()) << "cups-pdf wrote nothing" << cupsd.errorLogTail();
    // Without a title the job is named after the file.
    EXPECT_THAT(std::filesystem::path(printed).filename().string(), StartsWith("invoice"));
}

TEST_F(CupsPrinting, WordbmPrinterComesBeforeTheDefault) {
    ASSERT_TRUE(cupsd.makeQueueDefault());
    EnvGuard::set("WORDBM_PRINTER", "Empfang");
    EXPECT_EQ(printMessage([&] { CupsPrinter::print(pdf); }), "Drucker nicht gefunden: Empfang");
    std::string chosen;
    std::jthread([&] { chosen = CupsPrinter::defaultPrinter(); }).join();
    EXPECT_EQ(chosen, "Empfang");
}
