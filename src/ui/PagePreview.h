#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QComboBox;
class QImage;
class QLabel;
class QPdfDocument;
class QScrollArea;
class QTemporaryDir;

namespace wordbm {

class InvoiceRowChooser;

// Page 1 as the printer would show it, rendered by the office worker: of the working form as it
// stands, or of any invoice of the control file, the form filled from that invoice's row. Beside
// it, and on the page when it fails, stands what the QR code of the shown PDF reads back to, as the
// merge run reports it.
class PagePreview : public QWidget {
    Q_OBJECT
public:
    enum class Source { Form, Invoice };
    // Writes the PDF of a source to the path given, for the invoice chosen (1 the first; the form
    // has none); "" when written, else why not.
    using Export = std::function<std::string(const std::string& pdfPath, int invoice)>;
    // Reads the QR code of a written PDF back: nullopt when the source carries none, "" when the
    // code holds the source's data, otherwise the reason.
    using CodeCheck = std::function<std::optional<std::string>(const std::string& pdfPath)>;

    explicit PagePreview(QWidget* parent = nullptr);
    ~PagePreview() override;

    void setExport(Source source, Export write);
    void setCodeCheck(Source source, CodeCheck check);
    // Runs an export where the engine's work runs (off the window's thread, in turn with the
    // engine's commands); false when it cannot run now. Unset, exports run right here.
    using Runner = std::function<bool(const std::function<void()>& work)>;
    void setRunner(Runner run) { run_ = std::move(run); }
    // How many invoices the chooser offers; read before every rendering.
    void setInvoiceCount(std::function<int()> count) { invoiceCount_ = std::move(count); }
    // Chooses what is shown (cbxPreview) and renders it.
    void choose(Source source);
    // Chooses invoice `invoice` (kept within the invoices there are) and renders it.
    void chooseInvoice(int invoice);
    // Renders the chosen source; false (the reason shown instead) when there is nothing to show.
    bool render();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    Source chosen() const;
    void showReason(const QString& reason);
    void showCode(const std::string& pdfPath);
    // Writes a QR code that does not read back across the top of the page, where it is seen.
    void markFailedCode(QImage& page) const;
    // Draws page 1 as wide as the preview is, so that a line of the page is read without scrolling.
    bool showPage();

    QComboBox* cbxPreview_ = nullptr;
    InvoiceRowChooser* invoice_ = nullptr;
    QLabel* lblPreview_ = nullptr;
    QLabel* lblPreviewCode_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    // The PDF shown, kept while it is shown so that a wider window draws it anew.
    std::unique_ptr<QTemporaryDir> folder_;
    QPdfDocument* pdf_ = nullptr;
    Export form_;
    Export invoiceExport_;
    std::function<int()> invoiceCount_;
    // Why the QR code of the shown PDF does not read back; "" when it does or there is none.
    QString codeFailure_;
    CodeCheck formCode_;
    CodeCheck invoiceCode_;
    Runner run_;
};

} // namespace wordbm
