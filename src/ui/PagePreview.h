#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QComboBox;
class QLabel;
class QPdfDocument;
class QScrollArea;
class QTemporaryDir;

namespace wordbm {

// Page 1 as the printer would show it, rendered by the office worker: of the working form as it
// stands, or of invoice 1, the form filled from the first invoice row of the control file. Beside
// it stands what the QR code of the shown PDF reads back to, as the merge run reports it.
class PagePreview : public QWidget {
    Q_OBJECT
public:
    enum class Source { Form, Invoice };
    // Writes the PDF of a source to the path given; "" when written, else why not.
    using Export = std::function<std::string(const std::string& pdfPath)>;
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
    // Chooses what is shown (cbxPreview) and renders it.
    void choose(Source source);
    // Renders the chosen source; false (the reason shown instead) when there is nothing to show.
    bool render();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    Source chosen() const;
    void showReason(const QString& reason);
    void showCode(const std::string& pdfPath);
    // Draws page 1 as wide as the preview is, so that a line of the page is read without scrolling.
    bool showPage();

    QComboBox* cbxPreview_ = nullptr;
    QLabel* lblPreview_ = nullptr;
    QLabel* lblPreviewCode_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    // The PDF shown, kept while it is shown so that a wider window draws it anew.
    std::unique_ptr<QTemporaryDir> folder_;
    QPdfDocument* pdf_ = nullptr;
    Export form_;
    Export invoice_;
    CodeCheck formCode_;
    CodeCheck invoiceCode_;
    Runner run_;
};

} // namespace wordbm
