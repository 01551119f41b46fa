#include "LokHost.h"

#include "engine/office/WorkerProtocol.h"

#include <LibreOfficeKit/LibreOfficeKit.hxx>
#include <memory>
#include <stdexcept>

namespace wordbm::office {

namespace {

// LOK_DOCTYPE_TEXT, which the headers declare only with the unstable API switched on.
constexpr int TextDocument = 0;

// Filter options in the JSON form that saveAs understands since 7.4. Images keep their
// resolution and are stored losslessly so that a QR code stays sharp; SelectPdfVersion 1 makes
// PDF/A-1 (7.4 writes it as tagged 1a, which also satisfies 1b).
const char* filterOptions(bool pdfA) {
    static const std::string plain = R"({"ReduceImageResolution":{"type":"boolean","value":"false"},)"
                                     R"("UseLosslessCompression":{"type":"boolean","value":"true"}})";
    static const std::string archive = R"({"SelectPdfVersion":{"type":"long","value":"1"},)"
                                       R"("ReduceImageResolution":{"type":"boolean","value":"false"},)"
                                       R"("UseLosslessCompression":{"type":"boolean","value":"true"}})";
    return pdfA ? archive.c_str() : plain.c_str();
}

} // namespace

LokHost::LokHost(const std::string& installPath, const std::string& profileUrl)
    : office_(lok::lok_cpp_init(installPath.c_str(), profileUrl.c_str())) {
    if (office_ == nullptr) {
        throw std::runtime_error("LibreOfficeKit does not start from " + installPath);
    }
}

std::optional<LokHost::Failure> LokHost::exportPdf(const std::string& sourceUrl, const std::string& targetUrl,
                                                   bool pdfA) {
    const std::unique_ptr<lok::Document> document(office_->documentLoad(sourceUrl.c_str()));
    if (!document) {
        return Failure{protocol::LoadFailed, takeError()};
    }
    // A damaged package may still load through another filter (as a spreadsheet, say); that is
    // not the form the user meant.
    if (document->getDocumentType() != TextDocument) {
        return Failure{protocol::NotText, "document type " + std::to_string(document->getDocumentType())};
    }
    if (!document->saveAs(targetUrl.c_str(), "pdf", filterOptions(pdfA))) {
        return Failure{protocol::SaveFailed, takeError()};
    }
    return std::nullopt;
}

std::string LokHost::takeError() {
    char* error = office_->getError();
    if (error == nullptr) {
        return "no reason given";
    }
    std::string text = error;
    office_->freeError(error);
    return text;
}

} // namespace wordbm::office
