#include "ui/DesktopSession.h"

#include "engine/ooxml/DocxApplication.h"
#include "engine/slip/modESQR.h"
#include "ui/PagePreview.h"
#include "ui/frmWordBM.h"

namespace wordbm {

DesktopSession::DesktopSession(std::shared_ptr<SettingsStore> settings)
    : store_(std::move(settings)), options_(OptOptions::openMergerSection(store_), false),
      engine_(ui_, options_, [] { return ooxml::DocxApplication::create(); }) {
    engine_.SlipBuilder(std::make_unique<modESQR>(ui_, engine_.QRComponent()));
    ui_.options(&options_);
    ui_.documentSource([this] { return engine_.Doc(); });
    auto& window = ui_.window();
    window.editTemplate = [this, &window] {
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
        if (event != WindowEvent::Quit) {
            engine_.WorkingFormSave();
        }
    };
    window.templateChanged = [this](const std::string& mask) { engine_.Template(mask); };
    window.preview().setExport(PagePreview::Source::Invoice,
                               [this](const std::string& pdf) { return engine_.InvoicePreview(pdf); });
    window.preview().setCodeCheck(PagePreview::Source::Invoice,
                                  [this](const std::string& pdf) { return engine_.InvoicePreviewCode(pdf); });
}

} // namespace wordbm
