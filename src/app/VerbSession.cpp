#include "app/VerbSession.h"

#include "engine/ooxml/DocxApplication.h"
#include "engine/slip/modESQR.h"
#include "settings/IniSettingsStore.h"
#include "settings/ReadOnlySettingsStore.h"
#include "support/FileOps.h"

#include <memory>
#include <ostream>

namespace wordbm {

VerbSession::VerbSession(std::ostream& out, std::ostream& err, TerminalUserInterface::Policy policy)
    : err_(err), store_(std::make_shared<ReadOnlySettingsStore>(std::make_shared<IniSettingsStore>())),
      options_(OptOptions::openMergerSection(store_), true), ui_(out, err, std::move(policy)),
      engine_(ui_, options_, [] { return ooxml::DocxApplication::create(); }) {
    engine_.SlipBuilder(std::make_unique<modESQR>(ui_, engine_.QRComponent()));
}

VerbSession::~VerbSession() {
    engine_.mfWBM_Quit(true);
}

bool VerbSession::openForm(const std::string& form) {
    return engine_.mfWBM_OpenWordDoc(form);
}

bool VerbSession::openControlFile(const std::string& csv) {
    engine_.mfWBM_OpenCSVDoc(csv);
    if (engine_.CSVWork().empty()) {
        return false;
    }
    // The engine's box has said that the file holds no invoice, and why it may be so.
    if (engine_.CSVInvoices() == 0) {
        return false;
    }
    for (const auto& hint : engine_.CSVHints()) {
        err_ << hint << '\n';
    }
    return true;
}

} // namespace wordbm
