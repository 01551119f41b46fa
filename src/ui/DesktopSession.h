#pragma once

#include "engine/WordBM.h"
#include "settings/Opt.h"
#include "settings/OptOptions.h"
#include "settings/SettingsStore.h"
#include "ui/QtUserInterface.h"

#include <memory>

namespace wordbm {

// The window run's parts wired together: the settings, the Qt user interface and the engine on
// the embedded word processor, with the form view, the mask editor and the payment slip connected.
class DesktopSession {
public:
    explicit DesktopSession(std::shared_ptr<SettingsStore> settings);
    DesktopSession(const DesktopSession&) = delete;
    DesktopSession& operator=(const DesktopSession&) = delete;

    WordBM& engine() { return engine_; }
    QtUserInterface& ui() { return ui_; }

private:
    // How many invoices the merge makes and where, and the printer; read on the engine's thread.
    frmMerge::Plan mergePlan();

    Opt store_;
    OptOptions options_;
    QtUserInterface ui_;
    WordBM engine_;
};

} // namespace wordbm
