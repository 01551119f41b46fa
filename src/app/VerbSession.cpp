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
    if (engine_.CSV().LineCount() < 1) {
        err_ << csv << "\nDie Steuerdatei enthält keine Rechnungen.\n";
        return false;
    }
    return true;
}

} // namespace wordbm
