#include "ui/DesktopSession.h"

#include "engine/office/CupsPrinter.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/slip/modESQR.h"
#include "support/CoreCount.h"
#include "ui/LayoutView.h"
#include "ui/PagePreview.h"
#include "ui/frmWordBM.h"

#include <QFileInfo>

namespace wordbm {

DesktopSession::DesktopSession(std::shared_ptr<SettingsStore> settings)
    : store_(std::move(settings)), options_(OptOptions::openMergerSection(store_), false),
      engine_(ui_, options_, [] { return ooxml::DocxApplication::create(); }) {
    engine_.SlipBuilder(std::make_unique<modESQR>(ui_, engine_.QRComponent()));
    // As the batch merge does: a core each fills invoices while LibreOffice exports the others.
    engine_.MergeJobs(CoreCount());
    ui_.options(&options_);
    ui_.documentSource([this] { return engine_.Doc(); });
    auto& window = ui_.window();
    window.editTemplate = [this, &window] {
        // The editor shows the name the mask gives the first row of the open control file.
        engine_.NameTemplate().WordPath(engine_.WordDoc());
        engine_.NameTemplate().CSVPath(engine_.CSVDoc());
        if (const auto mask =
                ui_.fileNameTemplateDialog(engine_.NameTemplate(), window.templateText().toStdString())) {
            engine_.Template(*mask);
            window.setTemplate(QString::fromStdString(engine_.Template()));
        }
    };
    // No word processor shows the form here, so no one else could save it: each command's changes
    // go into the working copy at once, and the merge run and the copy-back see what the window
    // shows. The original is written only by the copy-back.
    ui_.afterCommand = [this](WindowEvent event) {
        if (event == WindowEvent::Quit) {
            return;
        }
        engine_.WorkingFormSave();
        // The counts and the trace follow every command that may have changed the form, and a
        // new form; the analysis shows its own, the merge run leaves the form as it was.
        switch (event) {
        case WindowEvent::Insert:
        case WindowEvent::Replace:
        case WindowEvent::Reset:
        case WindowEvent::Verify:
        case WindowEvent::ESQRgo:
        case WindowEvent::OpenWordDoc:
            engine_.CountsShow();
            break;
        default:
            break;
        }
    };
    ui_.formChanged = [this] { return engine_.FormChanged(); };
    ui_.mergePlan = [this] { return mergePlan(); };
    window.changesSettled = [this] { return engine_.ChangesSettle(); };
    window.quitRefused = [this] { return engine_.Running(); };
    window.templateChanged = [this](const std::string& mask) { engine_.Template(mask); };
    window.preview().setExport(PagePreview::Source::Invoice, [this](const std::string& pdf, int invoice) {
        return engine_.InvoicePreview(pdf, invoice);
    });
    window.layout().setFields(&engine_.Fields());
    window.preview().setInvoiceCount([this] { return static_cast<int>(engine_.CSVInvoices()); });
    window.preview().setCodeCheck(PagePreview::Source::Invoice,
                                  [this](const std::string& pdf) { return engine_.InvoicePreviewCode(pdf); });
}

} // namespace wordbm

namespace wordbm {

frmMerge::Plan DesktopSession::mergePlan() {
    CSVfile& data = engine_.CSV();
    int invoices = 0;
    std::int32_t first = 0;
    for (std::int32_t row = 1; row <= data.LineCount(); ++row) {
        if (engine_.InvoiceRow(row)) {
            ++invoices;
            first = first == 0 ? row : first;
        }
    }
    frmMerge::Plan plan;
    plan.run = invoices == 1 ? QStringLiteral("1 Rechnung") : QStringLiteral("%1 Rechnungen").arg(invoices);
    if (first > 0) {
        // The folder of the first invoice; the mask may give each invoice a folder of its own.
        FileNameTemplate& names = engine_.NameTemplate();
        names.WordPath(engine_.WordDoc());
        names.CSVPath(engine_.CSVDoc());
        const std::string name = names.DocName(first, data);
        if (!name.empty()) {
            plan.run +=
                QStringLiteral(" nach ") +
                QFileInfo(QString::fromStdString(FileNameTemplate::nativeDocPath(name))).absolutePath();
        }
    }
    const std::string printer = office::CupsPrinter::defaultPrinter();
    plan.printer = printer.empty() ? QStringLiteral("Kein Drucker eingerichtet: gedruckt wird nichts.")
                                   : QStringLiteral("Drucker: ") + QString::fromStdString(printer);
    return plan;
}

} // namespace wordbm
